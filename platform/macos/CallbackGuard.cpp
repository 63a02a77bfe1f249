#include "platform/macos/CallbackGuard.h"

#include <os/log.h>

#include <exception>

namespace platform {

// In plain C++, where a catch of everything catches what Objective-C throws, too.
bool guarded(const std::function<void()>& body) noexcept {
    try {
        body();
        return true;
    } catch (const std::exception& error) {
        os_log(OS_LOG_DEFAULT, "A callback failed: %{public}s", error.what());
    } catch (...) {
        os_log(OS_LOG_DEFAULT, "A callback failed.");
    }
    return false;
}

} // namespace platform
