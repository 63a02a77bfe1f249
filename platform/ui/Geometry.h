#pragma once

#include <limits>

// Lengths are in points. The origin is top left; rectangles are half-open.

namespace platform::ui {

/// In a frame: as long as what is offered.
inline constexpr double infinity = std::numeric_limits<double>::infinity();
/// A length like any other, only longer than anything it may be compared with.
inline constexpr double greatestFiniteMagnitude = std::numeric_limits<double>::max();

struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    double maxX() const { return x + width; }
    double maxY() const { return y + height; }
    bool contains(const Point point) const {
        return point.x >= x && point.x < maxX() && point.y >= y && point.y < maxY();
    }
    friend bool operator==(const Rect&, const Rect&) = default;
};

struct EdgeInsets {
    double top = 0;
    double leading = 0;
    double bottom = 0;
    double trailing = 0;
    friend bool operator==(const EdgeInsets&, const EdgeInsets&) = default;
};

enum class Axis { horizontal, vertical };
enum class HorizontalAlignment { leading, center, trailing };
enum class VerticalAlignment { top, center, bottom };

struct Alignment {
    HorizontalAlignment horizontal = HorizontalAlignment::center;
    VerticalAlignment vertical = VerticalAlignment::center;

    static const Alignment center;
    static const Alignment leading;
    static const Alignment trailing;
    friend bool operator==(const Alignment&, const Alignment&) = default;
};

inline constexpr Alignment Alignment::center{HorizontalAlignment::center, VerticalAlignment::center};
inline constexpr Alignment Alignment::leading{HorizontalAlignment::leading, VerticalAlignment::center};
inline constexpr Alignment Alignment::trailing{HorizontalAlignment::trailing, VerticalAlignment::center};

enum class Edge { all, horizontal, vertical, trailing };

} // namespace platform::ui
