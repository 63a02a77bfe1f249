#include "platform/macos/ScenePainter.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/ImageStore.h"
#include "platform/macos/NativeText.h"
#include "platform/macos/Retained.h"

namespace platform {

namespace {

/// The system cuts a text where it is told that it may.
constexpr double unlimited = 1e6;

NSParagraphStyle* truncating() {
    const Retained<NSMutableParagraphStyle> style{[[NSMutableParagraphStyle alloc] init]};
    [style.get() setLineBreakMode:NSLineBreakByTruncatingTail];
    return [[style.get() retain] autorelease];
}

NSBezierPath* pathOf(const ui::Outline& outline) {
    const NSRect area = toNSRect(outline.rect);
    switch (outline.shape) {
    case ui::ShapeKind::circle:
        return [NSBezierPath bezierPathWithOvalInRect:area];
    case ui::ShapeKind::capsule: {
        const CGFloat radius = outline.cornerRadius();
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
    [pathOf(ui::outlineOf(fill.shape, fill.rect, grid_)) fill];
}

void ScenePainter::paint(const ui::Stroke& stroke) const {
    const ui::StrokedOutline outline = ui::outlineOf(stroke, grid_);
    NSBezierPath* const path = pathOf(outline.path);
    [toNSColor(stroke.color) set];
    [path setLineWidth:outline.lineWidth];
    [path setMiterLimit:10];
    [path stroke];
}

/// The base line is moved to the grid.
void ScenePainter::paint(const ui::TextRun& run) const {
    NSFont* const font = toNSFont(run.font);
    NSDictionary* const attributes = @{
        NSFontAttributeName : font,
        NSForegroundColorAttributeName : toNSColor(run.color),
        NSParagraphStyleAttributeName : truncating()
    };
    const double top = grid_.snapped(run.rect.y + [font ascender]) - [font ascender];
    const double width = run.truncated ? run.rect.width : unlimited;
    [toNSString(run.text) drawInRect:NSMakeRect(run.rect.x, top, width, run.rect.height) withAttributes:attributes];
}

void ScenePainter::paint(const ui::ImageRun& run) const {
    images_.draw(run.image, grid_.snapped(run.rect), run.color);
}

void ScenePainter::paint(const ui::MenuIndicator& indicator) const {
    const ui::IndicatorLine line = ui::lineOf(indicator, grid_);
    const auto [start, tip, end] = line.points;
    NSBezierPath* const chevron = [NSBezierPath bezierPath];
    [chevron moveToPoint:NSMakePoint(start.x, start.y)];
    [chevron lineToPoint:NSMakePoint(tip.x, tip.y)];
    [chevron lineToPoint:NSMakePoint(end.x, end.y)];
    [chevron setLineWidth:line.lineWidth];
    [chevron setLineCapStyle:NSLineCapStyleRound];
    [chevron setLineJoinStyle:NSLineJoinStyleRound];
    [toNSColor(indicator.color) set];
    [chevron stroke];
}

void ScenePainter::paint(const ui::Clip& clip) const {
    [NSGraphicsContext saveGraphicsState];
    [pathOf(ui::outlineOf(clip.shape, clip.rect, grid_)) addClip];
    paint(clip.content);
    [NSGraphicsContext restoreGraphicsState];
}

void ScenePainter::paint(const ui::Control& control) const {
    paint(control.content);
}

void ScenePainter::fillLook(const ui::Control& control) const {
    const ui::Outline look = ui::lookOf(control);
    [[NSColor blackColor] set];
    [pathOf(ui::outlineOf(look.shape, look.rect, grid_)) fill];
}

} // namespace platform
