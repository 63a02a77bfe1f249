#include "simulator/SystemSettings/ToggleSwitch.h"

#include "simulator/SystemSettings/Appearance.h"

#include <QKeyEvent>
#include <QPainter>

namespace simulator::settings {

namespace {

constexpr qreal trackHeight = 22;
constexpr qreal trackWidth = 38;
constexpr qreal ring = 3;
constexpr qreal knobInset = 2;

constexpr QColor trackOff{142, 142, 147};

} // namespace

ToggleSwitch::ToggleSwitch() {
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize ToggleSwitch::sizeHint() const {
    return QSizeF{trackWidth + 2 * ring, trackHeight + 2 * ring}.toSize();
}

bool ToggleSwitch::hitButton(const QPoint& position) const {
    return rect().contains(position);
}

void ToggleSwitch::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QCheckBox::keyPressEvent(event);
}

void ToggleSwitch::paintEvent(QPaintEvent*) {
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF track{ring, ring, trackWidth, trackHeight};
    if (hasFocus()) {
        painter.setPen(QPen{color::accent, 2});
        painter.drawRoundedRect(track.adjusted(-2, -2, 2, 2), trackHeight / 2 + 2, trackHeight / 2 + 2);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? color::accent : trackOff);
    painter.drawRoundedRect(track, trackHeight / 2, trackHeight / 2);
    const auto knob = trackHeight - 2 * knobInset;
    const auto left = isChecked() ? track.right() - knobInset - knob : track.left() + knobInset;
    painter.setBrush(Qt::white);
    painter.drawEllipse(QRectF{left, track.top() + knobInset, knob, knob});
}

} // namespace simulator::settings
