#pragma once

// Colors and fonts.

namespace platform::ui {

/// An sRGB color with components from 0 to 1. Components outside that range are kept.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double opacity = 1;

    static const Color black;
    static const Color white;
    static const Color gray;
    friend bool operator==(const Color&, const Color&) = default;
};

inline constexpr Color Color::black{0, 0, 0, 1};
inline constexpr Color Color::white{1, 1, 1, 1};
inline constexpr Color Color::gray{142 / 255.0, 142 / 255.0, 147 / 255.0, 1};

/// The appearance that a screen prefers, whatever the desktop's is.
enum class ColorScheme { light };

enum class TextStyle { body, callout, title3 };
enum class FontWeight { regular, semibold };

/// A text style of the platform.
struct Font {
    TextStyle style = TextStyle::body;
    FontWeight weight = FontWeight::regular;

    static const Font body;
    static const Font callout;
    static const Font title3;
    friend bool operator==(const Font&, const Font&) = default;
};

inline constexpr Font Font::body{TextStyle::body, FontWeight::regular};
inline constexpr Font Font::callout{TextStyle::callout, FontWeight::regular};
inline constexpr Font Font::title3{TextStyle::title3, FontWeight::regular};

/// The size of a style's font, in points.
constexpr double pointSize(const TextStyle style) {
    if (style == TextStyle::title3) return 15;
    return style == TextStyle::callout ? 12 : 13;
}

} // namespace platform::ui
