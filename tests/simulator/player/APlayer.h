#pragma once

#include "tests/simulator/support/SimulatedMac.h"

#include <QDir>
#include <QFileSystemWatcher>

namespace simulator::tests {

/// Players whose temporary files lie in a folder of the test's own.
class APlayer : public testing::Test {
protected:
    QProcessEnvironment environment() const {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        environment.insert("TMPDIR", folder_.path());
        return environment;
    }
    std::unique_ptr<Program> started(const QString& file, const QStringList& words = {"--bus"}) const {
        return std::make_unique<Program>(SYSEXTCTL, QStringList{"play", file} + words, environment());
    }
    bool leavesNothing() const {
        return until([&] { return QDir{folder_.path()}.isEmpty(); });
    }
    bool isThere() const {
        return until([&] { return !QDir{folder_.path()}.isEmpty(); });
    }

private:
    TestApplication application_;
    QTemporaryDir folder_;
    /// Makes each change of the folder an event.
    QFileSystemWatcher watcher_{{folder_.path()}};
};

} // namespace simulator::tests
