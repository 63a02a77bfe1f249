#pragma once

#include <string_view>

namespace platform {

/// Writes `line` and a line feed to standard output. Never blocks, never fails: what standard output does not take at
/// once is dropped.
void printLine(std::string_view line);

} // namespace platform
