#include "platform/SystemExtensions.h"

#include "platform/macos/CallbackGuard.h"
#include "platform/macos/NativeText.h"
#include "platform/macos/Retained.h"

#import <SystemExtensions/SystemExtensions.h>
#include <dispatch/dispatch.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace platform {

namespace {

// Numbers go from the system to us and back as they are.

template <typename Ours, typename Theirs>
constexpr bool same(const Ours ours, const Theirs theirs) {
    return static_cast<NSInteger>(ours) == static_cast<NSInteger>(theirs);
}

using Action = OSSystemExtensionReplacementAction;
static_assert(same(Action::cancel, ::OSSystemExtensionReplacementActionCancel));
static_assert(same(Action::replace, ::OSSystemExtensionReplacementActionReplace));

using Result = OSSystemExtensionRequestResult;
static_assert(same(Result::completed, ::OSSystemExtensionRequestCompleted));
static_assert(same(Result::willCompleteAfterReboot, ::OSSystemExtensionRequestWillCompleteAfterReboot));

using Code = OSSystemExtensionErrorCode;
static_assert(same(Code::unknown, ::OSSystemExtensionErrorUnknown));
static_assert(same(Code::missingEntitlement, ::OSSystemExtensionErrorMissingEntitlement));
static_assert(same(Code::unsupportedParentBundleLocation, ::OSSystemExtensionErrorUnsupportedParentBundleLocation));
static_assert(same(Code::extensionNotFound, ::OSSystemExtensionErrorExtensionNotFound));
static_assert(same(Code::extensionMissingIdentifier, ::OSSystemExtensionErrorExtensionMissingIdentifier));
static_assert(same(Code::duplicateExtensionIdentifier, ::OSSystemExtensionErrorDuplicateExtensionIdentifer));
static_assert(same(Code::unknownExtensionCategory, ::OSSystemExtensionErrorUnknownExtensionCategory));
static_assert(same(Code::codeSignatureInvalid, ::OSSystemExtensionErrorCodeSignatureInvalid));
static_assert(same(Code::validationFailed, ::OSSystemExtensionErrorValidationFailed));
static_assert(same(Code::forbiddenBySystemPolicy, ::OSSystemExtensionErrorForbiddenBySystemPolicy));
static_assert(same(Code::requestCanceled, ::OSSystemExtensionErrorRequestCanceled));
static_assert(same(Code::requestSuperseded, ::OSSystemExtensionErrorRequestSuperseded));
static_assert(same(Code::authorizationRequired, ::OSSystemExtensionErrorAuthorizationRequired));

// Whatever the system hands over may be nil or of another class than announced: what cannot be read is empty, and never
// an exception.

bool areProperties(const id object) {
    return [object isKindOfClass:[::OSSystemExtensionProperties class]];
}

/// What is no properties keeps its description alone.
OSSystemExtensionProperties propertiesOf(const id object) {
    OSSystemExtensionProperties properties;
    properties.description = textOf([object description]);
    if (!areProperties(object)) return properties;
    ::OSSystemExtensionProperties* const native = object;
    properties.bundleIdentifier = textOf([native bundleIdentifier]);
    properties.bundleShortVersion = textOf([native bundleShortVersion]);
    properties.bundleVersion = textOf([native bundleVersion]);
    properties.isEnabled = [native isEnabled];
    properties.isAwaitingUserApproval = [native isAwaitingUserApproval];
    properties.isUninstalling = [native isUninstalling];
    return properties;
}

/// Members of another class are left out.
std::vector<OSSystemExtensionProperties> propertyListOf(const id array) {
    std::vector<OSSystemExtensionProperties> list;
    if (![array isKindOfClass:[NSArray class]]) return list;
    for (id member in static_cast<NSArray*>(array))
        if (areProperties(member)) list.push_back(propertiesOf(member));
    return list;
}

/// What is no error is one of no domain.
Error errorOf(const id object) {
    if (![object isKindOfClass:[NSError class]]) return {};
    NSError* const error = object;
    NSString* const ours = ::OSSystemExtensionErrorDomain;
    const bool isOurs = [[error domain] isEqual:ours];
    return {isOurs ? std::string{OSSystemExtensionErrorDomain} : textOf([error domain]), [error code],
            textOf([error localizedDescription])};
}

using Call = std::function<void(OSSystemExtensionRequestDelegate&)>;

/// Calls the delegate of the request, if it still lives.
void deliver(const OSSystemExtensionRequest& request, const Call& call) {
    guarded([&] {
        if (const auto delegate = request.delegate()) call(*delegate);
    });
}

/// Lets go of a request and of its delegate, which is handed over, once the callback that is running has returned.
void retire(id delegate);

} // namespace
} // namespace platform

/// Turns the callbacks of one request into those of our delegate. After the last one it hears no more.
@interface KelvraRequestDelegate : NSObject <OSSystemExtensionRequestDelegate> {
    std::shared_ptr<platform::OSSystemExtensionRequest> request_;
    bool ended_;
}
- (instancetype)initWithRequest:(const std::shared_ptr<platform::OSSystemExtensionRequest>&)request;
@end

@implementation KelvraRequestDelegate

- (instancetype)initWithRequest:(const std::shared_ptr<platform::OSSystemExtensionRequest>&)request {
    self = [super init];
    if (self) request_ = request;
    return self;
}

- (void)tell:(const platform::Call&)call {
    if (!ended_) platform::deliver(*request_, call);
}

- (void)tellLast:(const platform::Call&)call {
    if (std::exchange(ended_, true)) return;
    platform::deliver(*request_, call);
    platform::guarded([&] { platform::retire(self); });
}

- (::OSSystemExtensionReplacementAction)request:(::OSSystemExtensionRequest*)request
                    actionForReplacingExtension:(::OSSystemExtensionProperties*)existing
                                  withExtension:(::OSSystemExtensionProperties*)ext {
    auto action = platform::Action::cancel;
    [self tell:[&](platform::OSSystemExtensionRequestDelegate& delegate) {
        action = delegate.requestActionForReplacingExtension(*request_, platform::propertiesOf(existing),
                                                             platform::propertiesOf(ext));
    }];
    return static_cast<::OSSystemExtensionReplacementAction>(action);
}

- (void)requestNeedsUserApproval:(::OSSystemExtensionRequest*)request {
    [self tell:[&](platform::OSSystemExtensionRequestDelegate& delegate) {
        delegate.requestNeedsUserApproval(*request_);
    }];
}

- (void)request:(::OSSystemExtensionRequest*)request didFinishWithResult:(::OSSystemExtensionRequestResult)result {
    if (request_->kind() == platform::OSSystemExtensionRequest::Kind::properties) return;
    [self tellLast:[&](platform::OSSystemExtensionRequestDelegate& delegate) {
        delegate.requestDidFinishWithResult(*request_, static_cast<platform::Result>(result));
    }];
}

- (void)request:(::OSSystemExtensionRequest*)request didFailWithError:(NSError*)error {
    [self tellLast:[&](platform::OSSystemExtensionRequestDelegate& delegate) {
        delegate.requestDidFailWithError(*request_, platform::errorOf(error));
    }];
}

- (void)request:(::OSSystemExtensionRequest*)request
    foundProperties:(NSArray<::OSSystemExtensionProperties*>*)properties {
    [self tellLast:[&](platform::OSSystemExtensionRequestDelegate& delegate) {
        delegate.requestFoundProperties(*request_, platform::propertyListOf(properties));
    }];
}

@end

namespace platform {

namespace {

::OSSystemExtensionRequest* nativeRequest(const OSSystemExtensionRequest& request) {
    NSString* const identifier = toNSString(request.identifier());
    const dispatch_queue_t queue = dispatch_get_main_queue();
    switch (request.kind()) {
    case OSSystemExtensionRequest::Kind::activation:
        return [::OSSystemExtensionRequest activationRequestForExtension:identifier queue:queue];
    case OSSystemExtensionRequest::Kind::deactivation:
        return [::OSSystemExtensionRequest deactivationRequestForExtension:identifier queue:queue];
    case OSSystemExtensionRequest::Kind::properties:
        break;
    }
    return [::OSSystemExtensionRequest propertiesRequestForExtension:identifier queue:queue];
}

/// The system keeps no delegate alive, and perhaps no request: this does, until the last callback has returned.
class SystemManager final : public OSSystemExtensionManager {
public:
    /// Never destroyed: what is under way when the process ends is left to the system.
    static SystemManager& shared() {
        static SystemManager& manager = *std::make_unique<SystemManager>().release();
        return manager;
    }

    void submitRequest(const std::shared_ptr<OSSystemExtensionRequest> request) override {
        @autoreleasepool {
            const Retained<KelvraRequestDelegate> delegate{[[KelvraRequestDelegate alloc] initWithRequest:request]};
            const auto native = retain(nativeRequest(*request));
            [native.get() setDelegate:delegate.get()];
            outstanding_.push_back({native, delegate});
            [[::OSSystemExtensionManager sharedManager] submitRequest:native.get()];
        }
    }

    void forget(const id delegate) {
        const auto ended = std::find_if(outstanding_.begin(), outstanding_.end(), [&](const Submission& submission) {
            return submission.delegate.get() == delegate;
        });
        if (ended == outstanding_.end()) return;
        [ended->request.get() setDelegate:nil];
        outstanding_.erase(ended);
    }

private:
    struct Submission {
        Retained<::OSSystemExtensionRequest> request;
        Retained<KelvraRequestDelegate> delegate;
    };

    std::vector<Submission> outstanding_;
};

void retire(const id delegate) {
    DispatchQueue::main().async([delegate] { SystemManager::shared().forget(delegate); });
}

} // namespace

OSSystemExtensionManager& OSSystemExtensionManager::sharedManager() {
    return SystemManager::shared();
}

} // namespace platform
