#include "tests/support/QtTesting.h"

#include <QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    tests::failOnQtWarnings();
    const QCoreApplication application{argc, argv};
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
