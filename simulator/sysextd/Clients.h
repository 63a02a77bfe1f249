#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QHash>
#include <QObject>
#include <QString>

#include <sys/types.h>

#include <optional>

namespace simulator {

/// Who is on the bus, as the bus itself and the system say, not as they say themselves.
class Clients : public QObject {
    Q_OBJECT

public:
    /// owner: the user whose machine it is.
    Clients(const QDBusConnection& bus, uid_t owner);

    /// Whether it runs as the user whose machine it is. name: the unique name of the connection, whose leaving is told
    /// from then on. One that has left already is no one's.
    bool isOurs(const QString& name);
    /// The application bundle that its program lies in now, for it may be moved while it runs; empty if it lies in
    /// none.
    QString bundleOf(const QString& name);

signals:
    /// A client that was asked about has left the bus.
    void left(const QString& name);

private:
    /// What stays as it is as long as it is on the bus.
    struct Client {
        uid_t user = 0;
        uint process = 0;
    };

    /// Nothing if it is not on the bus.
    std::optional<Client> client(const QString& name);
    std::optional<Client> lookUp(const QString& name) const;
    void forget(const QString& name);

    QDBusConnection bus_;
    uid_t owner_;
    QDBusServiceWatcher watcher_;
    QHash<QString, Client> known_;
};

} // namespace simulator
