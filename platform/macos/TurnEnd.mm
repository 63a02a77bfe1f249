#include "platform/macos/TurnEnd.h"

#include "platform/macos/CallbackGuard.h"
#include "platform/macos/Retained.h"

#include <utility>

@interface KelvraPostedWork : NSObject {
@public
    std::function<void()> work_;
}
- (void)run;
@end

@implementation KelvraPostedWork

- (void)run {
    platform::guarded(work_);
}

@end

namespace platform {

void atEndOfTurn(std::function<void()> work) {
    const Retained<KelvraPostedWork> posted{[[KelvraPostedWork alloc] init]};
    posted.get()->work_ = std::move(work);
    [posted.get() performSelectorOnMainThread:@selector(run)
                                   withObject:nil
                                waitUntilDone:NO
                                        modes:@[ NSRunLoopCommonModes ]];
}

} // namespace platform
