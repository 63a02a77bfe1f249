#pragma once

#include "platform/ui/Geometry.h"

#include <algorithm>
#include <cmath>

namespace platform {

/// The device's pixels under a painting in points: edges are moved to them when something is painted, never before.
/// What lies halfway goes to the right or down, so that things of one size stay so wherever they stand.
class PixelGrid {
public:
    /// `scale`: device pixels a point.
    explicit PixelGrid(const double scale) : scale_{scale} {}

    double snapped(const double position) const { return std::floor(position * scale_ + 0.5) / scale_; }
    /// Both edges of each axis; neighbours stay neighbours.
    ui::Rect snapped(const ui::Rect& rect) const {
        const double x = snapped(rect.x);
        const double y = snapped(rect.y);
        return {x, y, snapped(rect.maxX()) - x, snapped(rect.maxY()) - y};
    }
    /// The largest square in `rect`, centred. Its size is rounded before its position, so that it stays a square.
    ui::Rect snappedSquare(const ui::Rect& rect) const {
        const double side = std::min(rect.width, rect.height);
        const double snappedSide = snapped(side);
        return {snapped(rect.x + (rect.width - side) / 2), snapped(rect.y + (rect.height - side) / 2), snappedSide,
                snappedSide};
    }
    /// A line is never thinner than a pixel.
    double lineWidth(const double width) const { return std::max(std::round(width * scale_), 1.0) / scale_; }

private:
    double scale_;
};

} // namespace platform
