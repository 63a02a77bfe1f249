#pragma once

#include <string_view>

namespace platform {

/// Writes `line` and a line feed to standard output. Never fails. A reader that takes nothing for 200 ms loses what is
/// left of the line, and is not waited for again until it has read.
void printLine(std::string_view line);

} // namespace platform
