#include "tests/support/QtWarnings.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    tests::failOnQtWarningsOffscreen();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir runtime;
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) qputenv("XDG_RUNTIME_DIR", runtime.path().toUtf8());
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
