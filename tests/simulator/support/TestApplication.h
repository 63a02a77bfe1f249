#pragma once

#include "simulator/client/Client.h"
#include "tests/support/QtTesting.h"

#include <QCoreApplication>

namespace simulator::tests {

using ::tests::until;

/// The application of a test that needs an event loop and no window. A warning of Qt fails the test.
/// There may be one at a time, before anything of Qt's that needs events.
class TestApplication {
public:
    /// The one warning that is let through says that a service's owner changed while it was asked for.
    TestApplication() { ::tests::failOnQtWarnings(isNoteOfOwnerRace); }

private:
    int argc_ = 1;
    char name_[6] = "tests";
    char* argv_[2] = {name_, nullptr};
    QCoreApplication application_{argc_, argv_};
};

} // namespace simulator::tests
