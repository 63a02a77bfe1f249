#pragma once

#include <algorithm>
#include <limits>

// Lengths are in points. The origin is top left; rectangles are half-open.

namespace platform::ui {

/// In a frame: as long as offered.
inline constexpr double infinity = std::numeric_limits<double>::infinity();
/// A length like any other, only longer than all others.
inline constexpr double greatestFiniteMagnitude = std::numeric_limits<double>::max();

/// Never beyond the greatest finite length.
constexpr double sumOf(const double a, const double b) {
    return std::clamp(a + b, -greatestFiniteMagnitude, greatestFiniteMagnitude);
}

struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

constexpr Point operator+(const Point a, const Point b) {
    return {sumOf(a.x, b.x), sumOf(a.y, b.y)};
}

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
    constexpr double maxX() const { return x + width; }
    constexpr double maxY() const { return y + height; }
    constexpr Point origin() const { return {x, y}; }
    constexpr Point center() const { return {x + width / 2, y + height / 2}; }
    constexpr Size size() const { return {width, height}; }
    /// Each edge moved inward, or outward if `by` is negative.
    constexpr Rect inset(const double by) const {
        return {sumOf(x, by), sumOf(y, by), width - 2 * by, height - 2 * by};
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

/// The position in something wider.
enum class HorizontalAlignment { leading, center, trailing };
/// The position in something higher. No screen needs another one.
enum class VerticalAlignment { center };
/// Both. An alignment named after an edge is centered along the other axis.
using Alignment = HorizontalAlignment;

enum class Edge { all, horizontal, vertical, trailing };

} // namespace platform::ui
