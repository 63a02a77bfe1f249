#pragma once

#include <optional>
#include <string>

namespace simulator::scenario {

/// Nothing if there is no such file, or it cannot be read.
std::optional<std::string> contentsOfFile(const std::string& path);

} // namespace simulator::scenario
