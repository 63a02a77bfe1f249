#pragma once

#include "platform/Bundle.h"
#include "platform/macos/Native.h"

namespace platform {

/// What an NSBundle of the system says. Never throws: a dictionary that is not there is null, for the reason that
/// infoProblem() gives.
NSBundle readBundle(Native bundle);

} // namespace platform
