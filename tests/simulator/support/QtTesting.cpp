#include "tests/simulator/support/QtTesting.h"

#include "simulator/client/Client.h"

#include <QEvent>
#include <QEventLoop>
#include <QTimer>

#include <gtest/gtest.h>

namespace simulator::tests {

namespace {

void fail(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtDebugMsg || type == QtInfoMsg || isNoteOfOwnerRace(message)) return;
    ADD_FAILURE() << "Qt says: " << message.toStdString();
}

void deleteDeferred() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

QtMessages::QtMessages() : before_{qInstallMessageHandler(fail)} {
}

QtMessages::~QtMessages() {
    qInstallMessageHandler(before_);
}

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
