#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

namespace simulator {

/// Tells when the service appears on a bus and when it is gone. It asks nothing and starts nothing.
class ServicePresence : public QObject {
    Q_OBJECT

public:
    explicit ServicePresence(QDBusConnection bus);

signals:
    /// The name has a new owner: everything known of the service has to be asked anew.
    void came();
    void went();
    /// The bus itself is gone. Nothing follows.
    void busLost();

private:
    void ownerChanged(const QString& name, const QString& before, const QString& now);

    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
};

} // namespace simulator
