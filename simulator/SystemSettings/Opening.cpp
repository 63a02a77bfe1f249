#include "simulator/SystemSettings/Opening.h"

#include <QEvent>
#include <QScreen>

#include <algorithm>
#include <cstdio>

namespace simulator::settings {

namespace {

/// What an application's window and the gap to it may take.
constexpr int roomBeside = 480;

QPoint placeFor(const QWidget& window) {
    const QRect screen = window.screen()->availableGeometry();
    const int left = screen.left() + (screen.width() - window.width() - roomBeside) / 2;
    const int top = screen.top() + (screen.height() - window.height()) / 2;
    return {std::max(left, screen.left()), std::max(top, screen.top())};
}

} // namespace

Opening::Opening(QWidget& window) {
    window.installEventFilter(this);
    window.move(placeFor(window));
    window.show();
}

bool Opening::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        std::puts("System Settings is open.");
        std::fflush(stdout);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace simulator::settings
