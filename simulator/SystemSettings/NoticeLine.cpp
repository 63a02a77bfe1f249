#include "simulator/SystemSettings/NoticeLine.h"

#include <QAccessible>

namespace simulator::settings {

NoticeLine::NoticeLine() : start_{"Start"} {
    setProperty("role", "notice");
    setLayout(&layout_);
    layout_.setContentsMargins(14, 10, 10, 10);
    layout_.addWidget(&text_, 1);
    layout_.addWidget(&start_);
    text_.setTextFormat(Qt::PlainText);
    text_.setWordWrap(true);
    start_.setAccessibleName("Start the simulated Mac");
    start_.setFocusPolicy(Qt::TabFocus);
    start_.setAutoDefault(true);
    connect(&start_, &QPushButton::clicked, this, &NoticeLine::startPressed);
    hide();
}

void NoticeLine::tell(const QString& text) {
    tell(text, false);
}

void NoticeLine::offerStart(const QString& text) {
    tell(text, true);
}

void NoticeLine::withdraw() {
    hide();
}

void NoticeLine::tell(const QString& text, bool withButton) {
    text_.setText(text);
    start_.setVisible(withButton);
    show();
    QAccessibleEvent announcement{&text_, QAccessible::Alert};
    QAccessible::updateAccessibility(&announcement);
}

} // namespace simulator::settings
