#pragma once

#include "platform/ui/Scene.h"

#include <algorithm>
#include <array>
#include <cmath>

// What is common to the painting of all windows: how edges align with device pixels, and shapes that a scene only
// names.

namespace platform::ui {

/// The window's background.
inline constexpr Color windowGround{236 / 255.0, 236 / 255.0, 236 / 255.0, 1};

/// The pixels of the device. Edges are aligned with them only when something is painted. Halves are rounded right or
/// down, so that things of the same size stay so in all positions.
class PixelGrid {
public:
    /// `scale`: device pixels per point.
    explicit PixelGrid(const double scale) : scale_{scale} {}

    double snapped(const double position) const { return std::floor(position * scale_ + 0.5) / scale_; }
    /// Both edges of each axis; neighbors stay neighbors.
    Rect snapped(const Rect& rect) const {
        const double x = snapped(rect.x);
        const double y = snapped(rect.y);
        return {x, y, snapped(rect.maxX()) - x, snapped(rect.maxY()) - y};
    }
    /// The largest square in `rect`, centered. Its size is rounded before its position, so that it stays a square.
    Rect snappedSquare(const Rect& rect) const {
        const double side = std::min(rect.width, rect.height);
        const double snappedSide = snapped(side);
        return {snapped(rect.x + (rect.width - side) / 2), snapped(rect.y + (rect.height - side) / 2), snappedSide,
                snappedSide};
    }
    /// A line is never thinner than a pixel.
    double lineWidth(const double width) const { return std::max(std::round(width * scale_), 1.0) / scale_; }
    /// The length in pixels of what is already on the grid.
    int pixels(const double length) const { return static_cast<int>(std::lround(length * scale_)); }
    double scale() const { return scale_; }

private:
    double scale_;
};

/// A shape as it is painted. A circle fills its rectangle, which is a square.
struct Outline {
    ShapeKind shape = ShapeKind::rectangle;
    Rect rect;

    /// Of the ends of a capsule.
    double cornerRadius() const { return std::min(rect.width, rect.height) / 2; }
    /// Enlarged by `margin` on every side.
    Outline grown(const double margin) const { return {shape, rect.inset(-margin)}; }
    friend bool operator==(const Outline&, const Outline&) = default;
};

/// A shape on the grid.
Outline outlineOf(ShapeKind shape, const Rect& rect, const PixelGrid& grid);

/// A line of this width, centered on a path.
struct StrokedOutline {
    Outline path;
    double lineWidth;
};

/// A stroke whose outer edge is on the grid and whose width is a whole number of pixels.
StrokedOutline outlineOf(const Stroke& stroke, const PixelGrid& grid);

/// The visible part of a control, which can be smaller than its rectangle, for the focus ring. Not on the grid.
Outline lookOf(const Control& control);

/// The line of a menu's indicator: down to its tip, which is on the grid, and up again, with round ends and join.
struct IndicatorLine {
    std::array<Point, 3> points;
    double lineWidth = 1.5;
};

IndicatorLine lineOf(const MenuIndicator& indicator, const PixelGrid& grid);

} // namespace platform::ui
