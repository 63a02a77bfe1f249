#include "platform/DispatchQueue.h"

#include "platform/macos/CallbackGuard.h"

#include <dispatch/dispatch.h>

#include <memory>
#include <utility>

namespace platform {

namespace {

using Work = std::function<void()>;

void run(void* const context) {
    @autoreleasepool {
        const std::unique_ptr<Work> work{static_cast<Work*>(context)};
        guarded(*work);
    }
}

} // namespace

void DispatchQueue::async(std::function<void()> work) const {
    auto kept = std::make_unique<Work>(std::move(work));
    dispatch_async_f(dispatch_get_main_queue(), kept.release(), run);
}

} // namespace platform
