#include "platform/ui/NumberText.h"

#include <cmath>
#include <cstdio>

namespace platform::ui {

std::string textOf(const double number) {
    if (number == infinity) return "infinity";
    if (number == greatestFiniteMagnitude) return "greatest";
    char text[400];
    std::snprintf(text, sizeof text, "%.3f", number);
    std::string result{text};
    result.erase(result.find_last_not_of('0') + 1);
    if (result.back() == '.') result.pop_back();
    return result == "-0" ? "0" : result;
}

std::string textOf(const Color color) {
    if (color == Color::black) return "black";
    if (color == Color::white) return "white";
    if (color == Color::gray) return "gray";
    const std::string components =
        textOf(color.red * 255) + "/" + textOf(color.green * 255) + "/" + textOf(color.blue * 255);
    return color.opacity == 1 ? components : components + "@" + textOf(color.opacity);
}

std::string textOf(const Font font) {
    const std::string style = nameOf(font.style);
    return font.weight == FontWeight::regular ? style : style + " " + nameOf(font.weight);
}

std::string textOf(const Rect& rect) {
    return textOf(rect.x) + "," + textOf(rect.y) + " " + textOf(rect.width) + "x" + textOf(rect.height);
}

const char* nameOf(const TextStyle style) {
    switch (style) {
    case TextStyle::body:
        return "body";
    case TextStyle::callout:
        return "callout";
    case TextStyle::title3:
        return "title3";
    }
    return "";
}

const char* nameOf(const FontWeight weight) {
    switch (weight) {
    case FontWeight::regular:
        return "regular";
    case FontWeight::semibold:
        return "semibold";
    }
    return "";
}

const char* nameOf(const ShapeKind shape) {
    switch (shape) {
    case ShapeKind::rectangle:
        return "rectangle";
    case ShapeKind::capsule:
        return "capsule";
    case ShapeKind::circle:
        return "circle";
    }
    return "";
}

std::string nameOf(const Alignment alignment) {
    if (alignment == Alignment::center) return "center";
    return alignment == Alignment::leading ? "leading" : "trailing";
}

} // namespace platform::ui
