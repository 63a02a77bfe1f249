#pragma once

#include "platform/Bundle.h"

#include <cstdint>

namespace model {

/// The bundle's "CFBundleVersion" as an integer, read again on each call. If it is not text with a decimal integer, the
/// program stops with a line that names the file and the reason.
std::int64_t buildNumber(const platform::NSBundle& bundle);

} // namespace model
