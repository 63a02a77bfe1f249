#include "simulator/SystemSettings/StatusText.h"

#include "simulator/SystemSettings/Appearance.h"

#include <QPainter>

namespace simulator::settings {

namespace {

constexpr int dot = 8;
constexpr int gap = 7;

QColor colorOf(Standing standing) {
    switch (standing) {
    case Standing::waiting:
        return color::orange;
    case Standing::enabled:
        return color::green;
    case Standing::preparing:
    case Standing::disabled:
    case Standing::dying:
        break;
    }
    return color::grey;
}

} // namespace

StatusText::StatusText() {
    makeQuiet(*this, 12);
    setContentsMargins(dot + gap, 0, 0, 0);
}

void StatusText::display(Standing standing, const QString& text) {
    standing_ = standing;
    setText(text);
    update();
}

void StatusText::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area{0.5, (height() - dot) / 2.0, dot, dot};
    if (standing_ == Standing::dying || standing_ == Standing::preparing) {
        painter.setPen(QPen{colorOf(standing_), 1.5});
        painter.drawEllipse(area.adjusted(0.75, 0.75, -0.75, -0.75));
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(colorOf(standing_));
    painter.drawEllipse(area);
}

} // namespace simulator::settings
