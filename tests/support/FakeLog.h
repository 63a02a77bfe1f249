#pragma once

#include <string>
#include <vector>

namespace platform::fake {

/// What went to the log since the last reset, oldest first.
const std::vector<std::string>& loggedLines();

void resetLog();

} // namespace platform::fake
