#pragma once

#include <string>
#include <vector>

namespace platform::fake {

/// What went to standard output since the last reset, oldest first, without the line feeds.
const std::vector<std::string>& printedLines();

void resetOutput();

} // namespace platform::fake
