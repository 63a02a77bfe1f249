#pragma once

#include "platform/Bundle.h"

namespace platform::fake {

/// Makes `bundle` the main bundle. References to the one before stay valid and see this one.
void setMainBundle(NSBundle bundle);

/// A main bundle of this dictionary, whose images lie in `resourcePath`.
void setMainBundle(InfoDictionary dictionary, std::string resourcePath = {});

/// A main bundle without a dictionary, for the reason `problem`.
void setMainBundleWithoutDictionary(std::string problem);

/// The main bundle as a test finds it: "CFBundleVersion" is the text 2105, and there are no images.
void resetMainBundle();

} // namespace platform::fake
