#include "platform/linux/ScenePainter.h"

#include "platform/linux/Appearance.h"
#include "platform/linux/ImageStore.h"

#include <QFontMetricsF>
#include <QPainterPath>

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

QPainterPath pathOf(const ui::Outline& outline) {
    const bool isSharp = outline.shape == ui::ShapeKind::rectangle;
    return roundedRect(toQRectF(outline.rect), isSharp ? 0 : outline.cornerRadius());
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

void ScenePainter::paint(const ui::Fill& fill) {
    painter_.fillPath(pathOf(ui::outlineOf(fill.shape, fill.rect, grid_)), toQColor(fill.color));
}

void ScenePainter::paint(const ui::Stroke& stroke) {
    const ui::StrokedOutline outline = ui::outlineOf(stroke, grid_);
    QPen pen{toQColor(stroke.color), outline.lineWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin};
    pen.setMiterLimit(10);
    painter_.strokePath(pathOf(outline.path), pen);
}

void ScenePainter::paint(const ui::TextRun& run) {
    const QFont font = toQFont(run.font);
    const QFontMetricsF metrics{font};
    const QString whole = QString::fromStdString(run.text);
    const QString text = run.truncated ? metrics.elidedText(whole, Qt::ElideRight, run.rect.width) : whole;
    painter_.setFont(font);
    painter_.setPen(toQColor(run.color));
    painter_.drawText(QPointF{run.rect.x, grid_.snapped(run.rect.y + metrics.ascent())}, text);
}

void ScenePainter::paint(const ui::ImageRun& run) {
    const QRectF target = toQRectF(grid_.snapped(run.rect));
    const QSize pixels{grid_.pixels(target.width()), grid_.pixels(target.height())};
    const QPixmap image = images_.image(run.image, pixels, toQColor(run.color), grid_.scale());
    if (!image.isNull()) painter_.drawPixmap(target.topLeft(), image);
}

void ScenePainter::paint(const ui::MenuIndicator& indicator) {
    const ui::IndicatorLine line = ui::lineOf(indicator, grid_);
    QPolygonF chevron;
    for (const ui::Point& point : line.points)
        chevron << QPointF{point.x, point.y};
    painter_.setPen(QPen{toQColor(indicator.color), line.lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin});
    painter_.drawPolyline(chevron);
}

void ScenePainter::paint(const ui::Clip& clip) {
    painter_.save();
    painter_.setClipPath(pathOf(ui::outlineOf(clip.shape, clip.rect, grid_)), Qt::IntersectClip);
    paint(clip.content);
    painter_.restore();
}

void ScenePainter::paint(const ui::Control& control) {
    paint(control.content);
}

void ScenePainter::paintFocusRing(const ui::Control& control) {
    const ui::Outline look = ui::lookOf(control);
    const double line = grid_.lineWidth(focusLine);
    const ui::Outline ring = ui::outlineOf(look.shape, look.rect, grid_).grown(grid_.lineWidth(focusGap) + line / 2);
    const bool isRound = ring.shape != ui::ShapeKind::rectangle;
    painter_.strokePath(isRound ? pathOf(ring) : roundedRect(toQRectF(ring.rect), 4), QPen{accentColor, line});
}

ui::Size QtMetrics::textSize(const std::string& text, const ui::Font font) const {
    const QFontMetricsF metrics{toQFont(font)};
    return {metrics.horizontalAdvance(QString::fromStdString(text)), metrics.height()};
}

ui::Size QtMetrics::imageSize(const ui::ImageReference& image) const {
    const QSizeF size = images_.size(image);
    return {size.width(), size.height()};
}

} // namespace platform
