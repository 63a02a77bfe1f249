#pragma once

#include <functional>

namespace platform {

/// Runs `body`, which the operating system called for; what it throws, of C++ or of Objective-C, ends here and is
/// logged. Returns whether nothing was thrown.
bool guarded(const std::function<void()>& body) noexcept;

} // namespace platform
