#include "platform/linux/ScenePainter.h"

#include "platform/linux/Conversions.h"
#include "platform/linux/ImageStore.h"
#include "platform/linux/LightAppearance.h"
#include "platform/ui/ControlLook.h"

#include <QFontMetricsF>

namespace platform {

namespace {

/// Between a control and its focus ring.
constexpr double focusGap = 1;
constexpr double focusLine = 2;

QPainterPath roundedRect(const QRectF& rect, const double radius) {
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return path;
}

} // namespace

ScenePainter::ScenePainter(QPainter& painter, const ImageStore& images)
    : painter_{painter}, images_{images}, grid_{painter.device()->devicePixelRatioF()} {
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setRenderHint(QPainter::TextAntialiasing);
}

void ScenePainter::paint(const std::vector<ui::SceneNode>& nodes) {
    for (const ui::SceneNode& node : nodes)
        std::visit([this](const auto& value) { paint(value); }, node.value);
}

QPainterPath ScenePainter::outline(const ui::ShapeKind shape, const ui::Rect& rect, const double margin) const {
    const auto withMargin = [margin](const ui::Rect& snapped) {
        return toQRectF(snapped).adjusted(-margin, -margin, margin, margin);
    };
    const QRectF area = withMargin(grid_.snapped(rect));
    QPainterPath path;
    switch (shape) {
    case ui::ShapeKind::rectangle:
        path.addRect(area);
        break;
    case ui::ShapeKind::circle:
        path.addEllipse(withMargin(grid_.snappedSquare(rect)));
        break;
    case ui::ShapeKind::capsule:
        path = roundedRect(area, std::min(area.width(), area.height()) / 2);
        break;
    }
    return path;
}

void ScenePainter::paint(const ui::Fill& fill) {
    painter_.fillPath(outline(fill.shape, fill.rect), toQColor(fill.color));
}

void ScenePainter::paint(const ui::Stroke& stroke) {
    const double half = stroke.lineWidth / 2;
    const ui::Rect outer{stroke.rect.x - half, stroke.rect.y - half, stroke.rect.width + stroke.lineWidth,
                         stroke.rect.height + stroke.lineWidth};
    const double line = grid_.lineWidth(stroke.lineWidth);
    QPen pen{toQColor(stroke.color), line, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin};
    pen.setMiterLimit(10);
    painter_.strokePath(outline(stroke.shape, outer, -line / 2), pen);
}

void ScenePainter::paint(const ui::TextRun& run) {
    const QFont font = toQFont(run.font);
    const QFontMetricsF metrics{font};
    const QString whole = toQString(run.text);
    const QString text = run.truncated ? metrics.elidedText(whole, Qt::ElideRight, run.rect.width) : whole;
    painter_.setFont(font);
    painter_.setPen(toQColor(run.color));
    painter_.drawText(QPointF{run.rect.x, grid_.snapped(run.rect.y + metrics.ascent())}, text);
}

void ScenePainter::paint(const ui::ImageRun& run) {
    const QRectF target = toQRectF(grid_.snapped(run.rect));
    const QSize pixels{grid_.pixels(target.width()), grid_.pixels(target.height())};
    QImage image = images_.image(run.image, pixels, toQColor(run.color));
    if (image.isNull()) return;
    image.setDevicePixelRatio(grid_.scale());
    painter_.drawImage(target.topLeft(), image);
}

void ScenePainter::paint(const ui::MenuIndicator& indicator) {
    const QRectF area = toQRectF(indicator.rect);
    const QPointF tip{area.center().x(), grid_.snapped(area.center().y() + 2)};
    QPainterPath chevron{tip + QPointF{-3.5, -3.5}};
    chevron.lineTo(tip);
    chevron.lineTo(tip + QPointF{3.5, -3.5});
    painter_.strokePath(chevron, QPen{toQColor(indicator.color), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin});
}

void ScenePainter::paint(const ui::Clip& clip) {
    painter_.save();
    painter_.setClipPath(outline(clip.shape, clip.rect), Qt::IntersectClip);
    paint(clip.content);
    painter_.restore();
}

void ScenePainter::paint(const ui::Control& control) {
    paint(control.content);
}

void ScenePainter::paintFocusRing(const ui::Control& control) {
    const ui::ControlLook look = ui::lookOf(control);
    const double line = grid_.lineWidth(focusLine);
    const double margin = grid_.lineWidth(focusGap) + line / 2;
    const QPainterPath ring = look.shape == ui::ShapeKind::rectangle
                                  ? roundedRect(outline(look.shape, look.rect, margin).boundingRect(), 4)
                                  : outline(look.shape, look.rect, margin);
    painter_.strokePath(ring, QPen{accentColor, line});
}

} // namespace platform
