#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QHash>
#include <QObject>
#include <QString>

#include <sys/types.h>

#include <optional>

namespace simulator {

/// A program on the bus.
struct Client {
    /// It runs as the user whose machine it is.
    bool isOurs = false;
    /// The application bundle that its program lies in; empty if it lies in none.
    QString bundle;
};

/// Who is on the bus, as the bus itself and the system say, not as they say themselves.
class Clients : public QObject {
    Q_OBJECT

public:
    /// owner: the user whose machine it is.
    Clients(const QDBusConnection& bus, uid_t owner);

    /// name: the unique name of the connection. From then on its leaving is told. One that has left already is no
    /// one's.
    Client client(const QString& name);

signals:
    /// A client that was asked about has left the bus.
    void left(const QString& name);

private:
    void forget(const QString& name);
    /// Nothing if it is not on the bus.
    std::optional<Client> lookUp(const QString& name) const;

    QDBusConnection bus_;
    uid_t owner_;
    QDBusServiceWatcher watcher_;
    QHash<QString, Client> known_;
};

} // namespace simulator
