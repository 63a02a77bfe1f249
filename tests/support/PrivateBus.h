#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace tests {

/// A message bus of a test's own, from a dbus-daemon that ends with it.
class PrivateBus {
public:
    /// Starts the daemon and returns once it listens.
    PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    /// Ends the daemon.
    ~PrivateBus();

    const QString& address() const { return address_; }

    /// Lets the daemon start `command` when somebody calls `name`. The commands inherit this process's environment.
    void addActivatableService(const QString& name, const QString& command);

    /// Ends the daemon under its clients' feet, and returns once it has gone.
    void stop();
    /// Starts it again, at the same address.
    void start();

private:
    QString writeConfiguration() const;

    QTemporaryDir folder_;
    QProcess daemon_;
    QString address_;
};

} // namespace tests
