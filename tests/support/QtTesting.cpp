#include "tests/support/QtTesting.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>

namespace tests {

namespace {

bool (*isUsualMessage)(const QString& message);

void handle(const QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtDebugMsg || type == QtInfoMsg || isUsualMessage(message)) return;
    ADD_FAILURE() << "Qt says: " << message.toStdString();
}

void deleteDeferred() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

void failOnQtWarnings(bool (*isUsual)(const QString& message)) {
    isUsualMessage = isUsual;
    qInstallMessageHandler(handle);
}

bool until(const std::function<bool()>& condition) {
    bool isLate = false;
    QTimer bound;
    bound.setSingleShot(true);
    bound.callOnTimeout([&isLate] { isLate = true; });
    bound.start(std::chrono::seconds{30});
    while (!condition() && !isLate) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        deleteDeferred();
    }
    return condition();
}

void handleEvents() {
    QCoreApplication::processEvents();
    deleteDeferred();
}

} // namespace tests
