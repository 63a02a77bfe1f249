#pragma once

#include <string_view>

namespace platform {

/// Stops the program for a fault in the program or its bundle: one line on standard error, then abort.
[[noreturn]] void fatalError(std::string_view message);

} // namespace platform
