#include "platform/ui/Painting.h"

namespace platform::ui {

Outline outlineOf(const ShapeKind shape, const Rect& rect, const PixelGrid& grid) {
    return {shape, shape == ShapeKind::circle ? grid.snappedSquare(rect) : grid.snapped(rect)};
}

StrokedOutline outlineOf(const Stroke& stroke, const PixelGrid& grid) {
    const double line = grid.lineWidth(stroke.lineWidth);
    const Outline outer = outlineOf(stroke.shape, stroke.rect.inset(-stroke.lineWidth / 2), grid);
    return {outer.grown(-line / 2), line};
}

Outline lookOf(const Control& control) {
    for (const SceneNode& node : control.content) {
        if (const auto* clip = std::get_if<Clip>(&node.value)) return {clip->shape, clip->rect};
        if (const auto* indicator = std::get_if<MenuIndicator>(&node.value))
            return {ShapeKind::rectangle, indicator->rect};
    }
    return {ShapeKind::rectangle, control.rect};
}

IndicatorLine lineOf(const MenuIndicator& indicator, const PixelGrid& grid) {
    constexpr double arm = 3.5;
    constexpr double tipBelowCenter = 2;
    const Point center = indicator.rect.center();
    const Point tip{center.x, grid.snapped(center.y + tipBelowCenter)};
    return {{tip + Point{-arm, -arm}, tip, tip + Point{arm, -arm}}};
}

} // namespace platform::ui
