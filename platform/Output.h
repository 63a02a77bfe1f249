#pragma once

#include <string_view>

namespace platform {

/// Writes `line` and a line feed to standard output. Never fails. If the reader takes nothing for 200 ms, the rest of
/// the line is dropped, and later calls do not wait until it has read.
void printLine(std::string_view line);

} // namespace platform
