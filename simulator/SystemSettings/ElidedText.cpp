#include "simulator/SystemSettings/ElidedText.h"

#include <QPainter>

#include <algorithm>

namespace simulator::settings {

ElidedText::ElidedText(const QFont& font, const QColor& color, Qt::TextElideMode elision)
    : color_{color}, elision_{elision} {
    setFont(font);
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize ElidedText::minimumSizeHint() const {
    const auto whole = sizeHint();
    return {std::min(whole.width(), fontMetrics().averageCharWidth() * 8), whole.height()};
}

void ElidedText::paintEvent(QPaintEvent*) {
    QPainter painter{this};
    painter.setPen(color_);
    const auto shown = fontMetrics().elidedText(text(), elision_, width());
    painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, shown);
    setToolTip(shown == text() ? QString{} : text());
}

} // namespace simulator::settings
