#include "tests/simulator/support/QtMessages.h"

#include "simulator/client/OwnerRaces.h"

#include <gtest/gtest.h>

namespace simulator::tests {

namespace {

void fail(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtDebugMsg || type == QtInfoMsg || isNoteOfOwnerRace(message)) return;
    ADD_FAILURE() << "Qt says: " << message.toStdString();
}

} // namespace

QtMessages::QtMessages() : before_{qInstallMessageHandler(fail)} {
}

QtMessages::~QtMessages() {
    qInstallMessageHandler(before_);
}

} // namespace simulator::tests
