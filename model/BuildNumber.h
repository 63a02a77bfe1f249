#pragma once

#include "platform/Bundle.h"

#include <cstdint>

namespace model {

/// The bundle's build: its "CFBundleVersion" as an integer, looked up and converted anew on each call. A bundle whose
/// "CFBundleVersion" is no decimal integer in a text stops the program with a line that names the file and the reason.
std::int64_t buildNumber(const platform::NSBundle& bundle);

} // namespace model
