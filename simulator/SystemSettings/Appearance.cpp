#include "simulator/SystemSettings/Appearance.h"

#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QPainter>
#include <QPalette>
#include <QStyle>

#include <algorithm>

namespace simulator::settings {

namespace {

constexpr QColor ground{243, 243, 245};
constexpr QColor ink{29, 29, 31};
constexpr QColor accent{0, 103, 244};
constexpr QColor grey{142, 142, 147};

QPalette lightPalette() {
    QPalette palette{ink,       ground,    Qt::white, QColor{160, 160, 160}, QColor{200, 200, 200}, ink,
                     Qt::white, Qt::white, ground};
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, grey);
    return palette;
}

QFont typeface() {
    QFont font{QStringLiteral("Inter")};
    font.setPixelSize(13);
    return font;
}

QString styleSheet() {
    QFile file{QStringLiteral(":/Appearance.qss")};
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString{};
}

/// The ring that the application draws: as wide, as far off. It runs through the margin of the control.
void paintFocusRing(QWidget& control, double radius) {
    if (!control.hasFocus() || !control.isActiveWindow()) return;
    QPainter painter{&control};
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen{accent, 2});
    painter.drawRoundedRect(QRectF{control.rect()}.adjusted(1, 1, -1, -1), radius, radius);
}

} // namespace

void useAppearance(QApplication& application) {
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(lightPalette());
    QApplication::setFont(typeface());
    application.setStyleSheet(styleSheet());
    useAccessibility();
}

void setLook(QWidget& widget, const char* property, const QVariant& value) {
    if (widget.property(property) == value) return;
    widget.setProperty(property, value);
    widget.style()->unpolish(&widget);
    widget.style()->polish(&widget);
}

QBoxLayout& newRow(QWidget* widget, const QMargins& margins, int spacing) {
    auto* const layout = new QBoxLayout{QBoxLayout::LeftToRight, widget};
    layout->setContentsMargins(margins);
    layout->setSpacing(spacing);
    return *layout;
}

QBoxLayout& newColumn(QWidget* widget, const QMargins& margins, int spacing) {
    auto& layout = newRow(widget, margins, spacing);
    layout.setDirection(QBoxLayout::TopToBottom);
    return layout;
}

PlainText::PlainText(const char* role, const QString& text) {
    setProperty("role", role); // before assistive technology hears of a text
    setTextFormat(Qt::PlainText);
    setText(text);
}

ElidedText::ElidedText(const char* role, Qt::TextElideMode elision) : PlainText{role}, elision_{elision} {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize ElidedText::minimumSizeHint() const {
    const auto whole = sizeHint();
    return {std::min(whole.width(), fontMetrics().averageCharWidth() * 8), whole.height()};
}

void ElidedText::paintEvent(QPaintEvent*) {
    QPainter painter{this};
    const auto shown = fontMetrics().elidedText(text(), elision_, width());
    painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, shown);
    setToolTip(shown == text() ? QString{} : text());
}

Button::Button(const QString& text, bool leading) : QPushButton{text} {
    setProperty("leading", leading);
    setFocusPolicy(Qt::TabFocus);
    setAutoDefault(true);
}

void Button::paintEvent(QPaintEvent* event) {
    QPushButton::paintEvent(event);
    paintFocusRing(*this, 9);
}

ToggleSwitch::ToggleSwitch() {
    setProperty("role", "switch");
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ToggleSwitch::paintEvent(QPaintEvent* event) {
    QCheckBox::paintEvent(event);
    paintFocusRing(*this, 13);
}

void ToggleSwitch::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QCheckBox::keyPressEvent(event);
}

} // namespace simulator::settings
