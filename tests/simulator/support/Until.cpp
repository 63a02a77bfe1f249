#include "tests/simulator/support/Until.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>

namespace simulator::tests {

namespace {

void deleteDeferred() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

bool until(const std::function<bool()>& condition, std::chrono::milliseconds patience) {
    auto over = false;
    QTimer timer;
    timer.setSingleShot(true);
    timer.callOnTimeout([&over] { over = true; });
    timer.start(patience);
    while (!condition() && !over) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        deleteDeferred();
    }
    return condition();
}

void handleEvents() {
    QCoreApplication::processEvents();
    deleteDeferred();
}

} // namespace simulator::tests
