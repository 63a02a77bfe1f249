#pragma once

#include "platform/Bundle.h"

#include <filesystem>

namespace platform {

/// Reads the bundle at this path. Never throws: infoProblem() says what is wrong with the Info.plist.
NSBundle readBundle(const std::filesystem::path& bundle);

/// The bundle of <bundle>/Contents/MacOS/<executable>; without a dictionary if the executable is elsewhere.
NSBundle readBundleOfExecutable(const std::filesystem::path& executable);

} // namespace platform
