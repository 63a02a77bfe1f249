#include "tests/support/QtTesting.h"

#include <QByteArray>
#include <QString>

#include <cstdio>
#include <gtest/gtest.h>

namespace tests {

namespace {

void handle(const QtMsgType type, const QMessageLogContext&, const QString& message) {
    const auto text = message.toUtf8();
    if (type == QtDebugMsg || type == QtInfoMsg) {
        std::fprintf(stderr, "%s\n", text.constData());
    } else {
        ADD_FAILURE() << "Qt: " << text.constData();
    }
}

void handleOffscreen(const QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (!message.startsWith(QLatin1String{"This plugin does not support "})) handle(type, context, message);
}

} // namespace

void failOnQtWarnings() {
    qInstallMessageHandler(handle);
}

void failOnQtWarningsOffscreen() {
    qInstallMessageHandler(handleOffscreen);
}

} // namespace tests
