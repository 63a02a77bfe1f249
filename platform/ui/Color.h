#pragma once

namespace platform::ui {

/// A colour of the sRGB space, each component in 0 to 1. Components outside that range are kept as they are given.
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

} // namespace platform::ui
