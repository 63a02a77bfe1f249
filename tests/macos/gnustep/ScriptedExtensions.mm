#include "tests/macos/gnustep/ScriptedExtensions.h"

#import <SystemExtensions/SystemExtensions.h>

#include <functional>
#include <memory>
#include <stdexcept>

const NSErrorDomain OSSystemExtensionErrorDomain = @"the domain of the service's errors";

using standin::ScriptedExtensions;

@interface StandInRequest : OSSystemExtensionRequest {
@public
    std::string submission_;
    // Not kept, nor cleared when it goes: a test sees who frees it early.
    id<OSSystemExtensionRequestDelegate> delegate_;
}
@end

@implementation StandInRequest

+ (instancetype)requestOfKind:(const char*)kind extension:(NSString*)identifier {
    StandInRequest* const request = [[[self alloc] init] autorelease];
    request->submission_ = std::string{kind} + ' ' + [identifier UTF8String];
    return request;
}

- (void)dealloc {
    ScriptedExtensions::shared().gone(self);
    [super dealloc];
}

- (id<OSSystemExtensionRequestDelegate>)delegate {
    return delegate_;
}

- (void)setDelegate:(id<OSSystemExtensionRequestDelegate>)delegate {
    delegate_ = delegate;
}

@end

@implementation OSSystemExtensionRequest

@dynamic delegate;

+ (instancetype)activationRequestForExtension:(NSString*)identifier queue:(dispatch_queue_t)queue {
    return [StandInRequest requestOfKind:"activation" extension:identifier];
}

+ (instancetype)deactivationRequestForExtension:(NSString*)identifier queue:(dispatch_queue_t)queue {
    return [StandInRequest requestOfKind:"deactivation" extension:identifier];
}

+ (instancetype)propertiesRequestForExtension:(NSString*)identifier queue:(dispatch_queue_t)queue {
    return [StandInRequest requestOfKind:"properties" extension:identifier];
}

@end

@implementation OSSystemExtensionProperties

@dynamic bundleIdentifier, bundleVersion, bundleShortVersion, isEnabled, isAwaitingUserApproval, isUninstalling;

@end

@interface StandInProperties : OSSystemExtensionProperties {
@public
    NSString* bundleIdentifier_;
    NSString* bundleVersion_;
    NSString* bundleShortVersion_;
    BOOL isEnabled_;
    BOOL isAwaitingUserApproval_;
    BOOL isUninstalling_;
}
@property (readonly) NSString* bundleIdentifier;
@property (readonly) NSString* bundleVersion;
@property (readonly) NSString* bundleShortVersion;
@property (readonly) BOOL isEnabled;
@property (readonly) BOOL isAwaitingUserApproval;
@property (readonly) BOOL isUninstalling;
@end

@implementation StandInProperties

@synthesize bundleIdentifier = bundleIdentifier_;
@synthesize bundleVersion = bundleVersion_;
@synthesize bundleShortVersion = bundleShortVersion_;
@synthesize isEnabled = isEnabled_;
@synthesize isAwaitingUserApproval = isAwaitingUserApproval_;
@synthesize isUninstalling = isUninstalling_;

- (void)dealloc {
    [bundleIdentifier_ release];
    [bundleVersion_ release];
    [bundleShortVersion_ release];
    [super dealloc];
}

- (NSString*)description {
    return [NSString stringWithFormat:@"<%@ %@/%@>", bundleIdentifier_, bundleShortVersion_, bundleVersion_];
}

@end

@implementation OSSystemExtensionManager

+ (OSSystemExtensionManager*)sharedManager {
    static OSSystemExtensionManager* const manager = [[self alloc] init];
    return manager;
}

- (void)submitRequest:(OSSystemExtensionRequest*)request {
    ScriptedExtensions::shared().submitted(request);
}

@end

/// GNUstep keeps fewer bits of a code.
@interface StandInError : NSError {
@public
    NSInteger wholeCode_;
}
@end

@implementation StandInError

- (NSInteger)code {
    return wholeCode_;
}

@end

namespace standin {

namespace {

using Work = std::function<void()>;

void run(void* const context) {
    @autoreleasepool {
        const std::unique_ptr<Work> work{static_cast<Work*>(context)};
        (*work)();
    }
}

NSString* text(const char* const utf8) {
    return utf8 ? [NSString stringWithUTF8String:utf8] : nil;
}

} // namespace

ScriptedExtensions& ScriptedExtensions::shared() {
    static ScriptedExtensions service;
    return service;
}

void ScriptedExtensions::submitted(const Object request) {
    auto* const native = static_cast<StandInRequest*>(request);
    alive_.emplace(submissions_.size(), request);
    submissions_.push_back(native->submission_);
}

void ScriptedExtensions::gone(const Object request) {
    std::erase_if(alive_, [&](const auto& entry) { return entry.second == request; });
}

std::size_t ScriptedExtensions::latest(const std::string& submission) const {
    for (std::size_t index = submissions_.size(); index > 0; --index)
        if (submissions_[index - 1] == submission) return index - 1;
    throw std::out_of_range{"nobody submitted " + submission};
}

/// Calls `call` with the request and its delegate, from the main queue.
template <typename Call>
void ScriptedExtensions::answer(const std::size_t submission, Call call) {
    static_cast<void>(submissions_.at(submission));
    auto work = std::make_unique<Work>([this, submission, call = std::move(call)] {
        const auto found = alive_.find(submission);
        StandInRequest* const request = found == alive_.end() ? nil : static_cast<StandInRequest*>(found->second);
        if (request && request->delegate_) call(request, request->delegate_);
    });
    dispatch_async_f(dispatch_get_main_queue(), work.release(), run);
}

void ScriptedExtensions::needsApproval(const std::size_t submission) {
    answer(submission, [](OSSystemExtensionRequest* request, id<OSSystemExtensionRequestDelegate> delegate) {
        [delegate requestNeedsUserApproval:request];
    });
}

void ScriptedExtensions::askReplacement(const std::size_t submission, const Object existing, const Object replacement) {
    const id before = [static_cast<id>(existing) retain];
    const id after = [static_cast<id>(replacement) retain];
    answer(submission, [=, this](OSSystemExtensionRequest* request, id<OSSystemExtensionRequestDelegate> delegate) {
        replacementAnswers_.push_back([delegate request:request
                            actionForReplacingExtension:before
                                          withExtension:after]);
        [before release];
        [after release];
    });
}

void ScriptedExtensions::finish(const std::size_t submission, const long result) {
    answer(submission, [=](OSSystemExtensionRequest* request, id<OSSystemExtensionRequestDelegate> delegate) {
        [delegate request:request didFinishWithResult:static_cast<OSSystemExtensionRequestResult>(result)];
    });
}

void ScriptedExtensions::fail(const std::size_t submission, const Object error) {
    const id kept = [static_cast<id>(error) retain];
    answer(submission, [=](OSSystemExtensionRequest* request, id<OSSystemExtensionRequestDelegate> delegate) {
        [delegate request:request didFailWithError:kept];
        [kept release];
    });
}

void ScriptedExtensions::found(const std::size_t submission, const Object array) {
    const id kept = [static_cast<id>(array) retain];
    answer(submission, [=](OSSystemExtensionRequest* request, id<OSSystemExtensionRequestDelegate> delegate) {
        [delegate request:request foundProperties:kept];
        [kept release];
    });
}

void ScriptedExtensions::forget() {
    submissions_.clear();
    alive_.clear();
    replacementAnswers_.clear();
}

Object makeProperties(const char* const identifier, const char* const shortVersion, const char* const version,
                      const bool enabled, const bool awaiting, const bool uninstalling) {
    StandInProperties* const properties = [[[StandInProperties alloc] init] autorelease];
    properties->bundleIdentifier_ = [text(identifier) retain];
    properties->bundleShortVersion_ = [text(shortVersion) retain];
    properties->bundleVersion_ = [text(version) retain];
    properties->isEnabled_ = enabled;
    properties->isAwaitingUserApproval_ = awaiting;
    properties->isUninstalling_ = uninstalling;
    return properties;
}

void setVersion(const Object properties, const Object version) {
    static_cast<StandInProperties*>(properties)->bundleVersion_ = [static_cast<id>(version) retain];
}

Object makeError(const char* const domain, const long code, const char* const description) {
    NSDictionary* const info = description ? @{NSLocalizedDescriptionKey : text(description)} : @{};
    StandInError* const error = [[[StandInError alloc] initWithDomain:text(domain) code:0 userInfo:info] autorelease];
    error->wholeCode_ = code;
    return error;
}

Object makeArray(const std::vector<Object>& members) {
    NSMutableArray* const array = [NSMutableArray array];
    for (const Object member : members)
        [array addObject:static_cast<id>(member)];
    return array;
}

Object makeNumber(const long value) {
    return [NSNumber numberWithLong:value];
}

const char* serviceDomain() {
    return [OSSystemExtensionErrorDomain UTF8String];
}

} // namespace standin
