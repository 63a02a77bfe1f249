#pragma once

#include <QRectF>

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
    QRectF snapped(const QRectF& rect) const {
        return {QPointF{snapped(rect.left()), snapped(rect.top())},
                QPointF{snapped(rect.right()), snapped(rect.bottom())}};
    }
    /// A line is never thinner than a pixel.
    double lineWidth(const double width) const { return std::max(std::round(width * scale_), 1.0) / scale_; }
    /// The length in pixels of what is already on the grid.
    int pixels(const double length) const { return static_cast<int>(std::lround(length * scale_)); }
    double scale() const { return scale_; }

private:
    double scale_;
};

} // namespace platform
