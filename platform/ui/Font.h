#pragma once

namespace platform::ui {

enum class TextStyle { body, callout, title3 };
enum class FontWeight { regular, semibold };

/// A platform text style; its size in points is the window's matter: body 13, callout 12, title3 15.
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

constexpr double pointSize(const TextStyle style) {
    switch (style) {
    case TextStyle::body:
        return 13;
    case TextStyle::callout:
        return 12;
    case TextStyle::title3:
        return 15;
    }
    return 13;
}

} // namespace platform::ui
