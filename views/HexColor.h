#pragma once

#include "platform/ui/Style.h"

#include <string_view>

namespace views {

/// The color for a hexadecimal text; never fails. After trimming what is not alphanumeric from both ends, the number of
/// user-perceived characters decides: 8 for opacity, red, green, blue; 6 for red, green, blue; 3 for the same with each
/// digit doubled. Any other number gives an almost black, almost transparent color.
platform::ui::Color hexColor(std::string_view text);

} // namespace views
