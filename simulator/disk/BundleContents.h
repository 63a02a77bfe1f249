#pragma once

#include <string>

namespace simulator {

/// The folder of a bundle in which its Info.plist and its seal lie: Contents, or the bundle itself where it has none,
/// as a driver has none.
std::string contentsOf(const std::string& bundle);

} // namespace simulator
