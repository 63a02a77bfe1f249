#pragma once

#include "platform/ui/Color.h"
#include "platform/ui/Font.h"
#include "platform/ui/Geometry.h"
#include "platform/ui/Scene.h"

#include <string>

// How descriptions and scenes write their values.

namespace platform::ui {

/// At most three decimals, none that are zero; "infinity" and "greatest" for the two special lengths.
std::string textOf(double number);
/// "black", "white", "gray", or its components on the 0 to 255 scale, "182/183/126", with "@" and the opacity if not 1.
std::string textOf(Color color);
std::string textOf(Font font);
/// "16,10 20x20"
std::string textOf(const Rect& rect);
const char* nameOf(TextStyle style);
const char* nameOf(FontWeight weight);
const char* nameOf(ShapeKind shape);
std::string nameOf(Alignment alignment);

} // namespace platform::ui
