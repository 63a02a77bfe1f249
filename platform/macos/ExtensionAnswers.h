#pragma once

#include "platform/SystemExtensions.h"
#include "platform/macos/Native.h"

#include <vector>

// What the system's extension service answers, as ours. Whatever it hands over may be nil or of another class than
// announced: what cannot be read is empty, and never an exception.

namespace platform {

/// Of an OSSystemExtensionProperties. What is nil or of another class keeps its description alone.
OSSystemExtensionProperties propertiesOf(Native object);

/// Of an NSArray, in its order; members of another class are left out. nil and any other object hold none.
std::vector<OSSystemExtensionProperties> propertyListOf(Native array);

/// Of an NSError. nil and any other object are an error of no domain.
Error errorOf(Native object);

} // namespace platform
