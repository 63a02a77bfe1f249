#pragma once

#include "platform/ui/Style.h"

#include <string_view>

namespace views {

/// The color of a hexadecimal text, never failing. What is not alphanumeric is trimmed from both ends; then the count
/// of characters, as a person counts them, decides: 8 are opacity, red, green, blue; 6 red, green, blue; 3 the same
/// with each digit doubled. Any other count gives an almost black, almost clear color.
platform::ui::Color hexColor(std::string_view text);

} // namespace views
