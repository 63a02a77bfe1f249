#include "platform/SystemExtensions.h"

#include "platform/macos/CallbackGuard.h"
#include "platform/macos/ExtensionAnswers.h"
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

constexpr NSInteger numberOf(const OSSystemExtensionReplacementAction action) {
    return static_cast<NSInteger>(action);
}
static_assert(numberOf(OSSystemExtensionReplacementAction::cancel) == ::OSSystemExtensionReplacementActionCancel);
static_assert(numberOf(OSSystemExtensionReplacementAction::replace) == ::OSSystemExtensionReplacementActionReplace);

constexpr NSInteger numberOf(const OSSystemExtensionRequestResult result) {
    return static_cast<NSInteger>(result);
}
static_assert(numberOf(OSSystemExtensionRequestResult::completed) == ::OSSystemExtensionRequestCompleted);
static_assert(numberOf(OSSystemExtensionRequestResult::willCompleteAfterReboot) ==
              ::OSSystemExtensionRequestWillCompleteAfterReboot);

using Call = std::function<void(OSSystemExtensionRequestDelegate&)>;

/// Calls the delegate of the request, if it still lives.
void deliver(const OSSystemExtensionRequest& request, const Call& call) {
    guarded([&] {
        if (const auto delegate = request.delegate()) call(*delegate);
    });
}

/// Lets go of a request and of its delegate, which is handed over, once the callback that is running has returned.
void retire(Native delegate);

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
    auto action = platform::OSSystemExtensionReplacementAction::cancel;
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
    [self tellLast:[&](platform::OSSystemExtensionRequestDelegate& delegate) {
        delegate.requestDidFinishWithResult(*request_, static_cast<platform::OSSystemExtensionRequestResult>(result));
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

    void forget(const Native delegate) {
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

void retire(const Native delegate) {
    DispatchQueue::main().async([delegate] { SystemManager::shared().forget(delegate); });
}

} // namespace

OSSystemExtensionManager& OSSystemExtensionManager::sharedManager() {
    return SystemManager::shared();
}

} // namespace platform
