#include "simulator/SystemSettings/ExtensionIcon.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace simulator::settings {

namespace {

constexpr qreal side = 32;

void drawGround(QPainter& painter, const QColor& top, const QColor& bottom) {
    QLinearGradient gradient{0, 0, 0, side};
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawRoundedRect(QRectF{0, 0, side, side}, 7.5, 7.5);
}

void drawCamera(QPainter& painter) {
    QPainterPath lens;
    lens.moveTo(20.5, 15);
    lens.lineTo(25.5, 11.5);
    lens.lineTo(25.5, 20.5);
    lens.lineTo(20.5, 17);
    lens.closeSubpath();
    painter.drawRoundedRect(QRectF{6.5, 10.5, 13, 11}, 2.5, 2.5);
    painter.drawPath(lens);
}

void drawPlug(QPainter& painter) {
    painter.drawRoundedRect(QRectF{11.5, 6.5, 2.5, 6}, 1, 1);
    painter.drawRoundedRect(QRectF{18, 6.5, 2.5, 6}, 1, 1);
    QPainterPath body;
    body.moveTo(8.5, 12.5);
    body.lineTo(23.5, 12.5);
    body.lineTo(23.5, 15);
    body.cubicTo(23.5, 19.5, 20, 21.5, 16, 21.5);
    body.cubicTo(12, 21.5, 8.5, 19.5, 8.5, 15);
    body.closeSubpath();
    painter.drawPath(body);
    painter.drawRoundedRect(QRectF{14.75, 20.5, 2.5, 5.5}, 1, 1);
}

} // namespace

ExtensionIcon::ExtensionIcon() {
    setFixedSize(QSizeF{side, side}.toSize());
}

void ExtensionIcon::showCamera(bool isCamera) {
    isCamera_ = isCamera;
    update();
}

void ExtensionIcon::paintEvent(QPaintEvent*) {
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    if (isCamera_)
        drawGround(painter, QColor{88, 175, 255}, QColor{0, 103, 244});
    else
        drawGround(painter, QColor{170, 170, 178}, QColor{112, 112, 120});
    painter.setBrush(Qt::white);
    if (isCamera_)
        drawCamera(painter);
    else
        drawPlug(painter);
}

} // namespace simulator::settings
