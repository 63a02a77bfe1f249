#pragma once

#include "tests/simulator/support/QtMessages.h"

#include <QCoreApplication>

namespace simulator::tests {

/// The application of a test that needs an event loop and no window. A warning of Qt fails the test.
class TestApplication {
private:
    int argc_ = 1;
    char name_[6] = "tests";
    char* argv_[2] = {name_, nullptr};
    QCoreApplication application_{argc_, argv_};
    QtMessages messages_;
};

} // namespace simulator::tests
