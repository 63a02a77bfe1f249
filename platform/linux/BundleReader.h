#pragma once

#include "platform/Bundle.h"

#include <filesystem>

namespace platform {

/// Reads the bundle at this path, the folder that holds "Contents". Never throws: what is wrong with its Info.plist
/// stands in infoProblem().
NSBundle readBundle(const std::filesystem::path& bundle);

/// The bundle that holds this executable: <bundle>/Contents/MacOS/<executable>. An executable that lies elsewhere gets
/// a bundle without a dictionary.
NSBundle readBundleOfExecutable(const std::filesystem::path& executable);

} // namespace platform
