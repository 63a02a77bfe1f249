#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace tests {

/// A private message bus, with a dbus-daemon that ends with it. Needs a QCoreApplication.
class PrivateBus {
public:
    /// Returns once the daemon listens. The environment is that of the services which the bus starts.
    explicit PrivateBus(const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());
    ~PrivateBus();

    const QString& address() const { return address_; }

    /// A new connection. Its name is needed only to close it early.
    QDBusConnection connect();

    /// Makes the bus start the program whenever the name is called and nobody owns it. Call it at most once, and
    /// before the first call.
    void makeActivatable(const QString& name, const QString& program);

    /// The environment of a program that uses this bus.
    QProcessEnvironment environment() const;

    /// The error output of the bus and of the services that it started.
    QByteArray errors() const;

    /// Ends the bus while clients are connected, and waits until the service that it started has ended, too.
    void stop();
    /// Starts it again, at the same address.
    void start();

private:
    QString path(const QString& name) const;

    QTemporaryDir folder_;
    QProcess daemon_;
    const QString address_;
    QStringList connections_;
    QString activatable_;
};

} // namespace tests
