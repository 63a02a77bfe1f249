#include "platform/macos/ScenePainter.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/ImageStore.h"
#include "platform/macos/TextLine.h"
#include "platform/ui/ControlLook.h"

#include <algorithm>

namespace platform {

namespace {

/// The shape on the pixel grid, its outline moved inwards by `inset`.
NSBezierPath* outline(const ui::PixelGrid& grid, const ui::ShapeKind shape, const ui::Rect& rect,
                      const double inset = 0) {
    const NSRect area = NSInsetRect(toNSRect(grid.snapped(rect)), inset, inset);
    switch (shape) {
    case ui::ShapeKind::circle:
        return [NSBezierPath bezierPathWithOvalInRect:NSInsetRect(toNSRect(grid.snappedSquare(rect)), inset, inset)];
    case ui::ShapeKind::capsule: {
        const CGFloat radius = std::min(area.size.width, area.size.height) / 2;
        return [NSBezierPath bezierPathWithRoundedRect:area xRadius:radius yRadius:radius];
    }
    case ui::ShapeKind::rectangle:
        break;
    }
    return [NSBezierPath bezierPathWithRect:area];
}

} // namespace

void ScenePainter::paint(const std::vector<ui::SceneNode>& nodes) const {
    for (const ui::SceneNode& node : nodes)
        std::visit([this](const auto& value) { paint(value); }, node.value);
}

void ScenePainter::paint(const ui::Fill& fill) const {
    [toNSColor(fill.color) set];
    [outline(grid_, fill.shape, fill.rect) fill];
}

void ScenePainter::paint(const ui::Stroke& stroke) const {
    const double half = stroke.lineWidth / 2;
    const ui::Rect outer{stroke.rect.x - half, stroke.rect.y - half, stroke.rect.width + stroke.lineWidth,
                         stroke.rect.height + stroke.lineWidth};
    const double line = grid_.lineWidth(stroke.lineWidth);
    NSBezierPath* const path = outline(grid_, stroke.shape, outer, line / 2);
    [toNSColor(stroke.color) set];
    [path setLineWidth:line];
    [path setMiterLimit:10];
    [path stroke];
}

void ScenePainter::paint(const ui::TextRun& run) const {
    drawText(run, grid_);
}

void ScenePainter::paint(const ui::ImageRun& run) const {
    images_.draw(run.image, grid_.snapped(run.rect), run.color, grid_.scale());
}

void ScenePainter::paint(const ui::MenuIndicator& indicator) const {
    const double x = indicator.rect.x + indicator.rect.width / 2;
    const double y = grid_.snapped(indicator.rect.y + indicator.rect.height / 2 + 2);
    NSBezierPath* const chevron = [NSBezierPath bezierPath];
    [chevron moveToPoint:NSMakePoint(x - 3.5, y - 3.5)];
    [chevron lineToPoint:NSMakePoint(x, y)];
    [chevron lineToPoint:NSMakePoint(x + 3.5, y - 3.5)];
    [chevron setLineWidth:1.5];
    [chevron setLineCapStyle:NSLineCapStyleRound];
    [chevron setLineJoinStyle:NSLineJoinStyleRound];
    [toNSColor(indicator.color) set];
    [chevron stroke];
}

void ScenePainter::paint(const ui::Clip& clip) const {
    [NSGraphicsContext saveGraphicsState];
    [outline(grid_, clip.shape, clip.rect) addClip];
    paint(clip.content);
    [NSGraphicsContext restoreGraphicsState];
}

void ScenePainter::paint(const ui::Control& control) const {
    paint(control.content);
}

void ScenePainter::fillLook(const ui::Control& control) const {
    const ui::ControlLook look = ui::lookOf(control);
    [[NSColor blackColor] set];
    [outline(grid_, look.shape, look.rect) fill];
}

} // namespace platform
