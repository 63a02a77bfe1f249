#pragma once

#include "tests/simulator/application/Asker.h"
#include "tests/simulator/support/Program.h"
#include "tests/support/PrivateBus.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <ostream>
#include <string>

namespace simulator::tests {

/// What a program left behind.
struct Outcome {
    int code = -1;
    std::string output;
    std::string errors;

    bool operator==(const Outcome&) const = default;
};

void PrintTo(const Outcome& outcome, std::ostream* stream);

/// It was done, and there was nothing to say.
inline const Outcome silence{0, "", ""};

/// A simulated Mac of the test's own: a bus that starts the service, an empty store, and an Applications folder with
/// an application that carries a camera extension and a network driver. Needs a QCoreApplication.
class SimulatedMac {
public:
    SimulatedMac();

    QDBusConnection connect() { return bus_.connect(); }
    /// A process of the application.
    Asker application() const { return {program_, bus_.environment()}; }
    Program started(const QStringList& arguments) const;
    /// What the command line leaves behind.
    Outcome sysextctl(const QStringList& arguments) const;
    /// The same for words that hold no spaces.
    Outcome sysextctl(const QString& line) const { return sysextctl(line.split(u' ')); }

    /// Ends the service as a crash would.
    void killService();
    /// What the service and the bus wrote to standard error.
    QByteArray errors() const { return bus_.errors(); }

private:
    QProcessEnvironment serviceEnvironment() const;
    void setApplicationsFolder();

    QTemporaryDir folder_;
    QString program_;
    ::tests::PrivateBus bus_;
};

} // namespace simulator::tests
