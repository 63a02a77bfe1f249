#include "simulator/client/ServicePresence.h"

#include "simulator/bus/Names.h"

#include <utility>

namespace simulator {

ServicePresence::ServicePresence(QDBusConnection bus)
    : bus_{std::move(bus)}, watcher_{serviceName, bus_, QDBusServiceWatcher::WatchForOwnerChange} {
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this, &ServicePresence::ownerChanged);
    bus_.connect({}, "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local", "Disconnected", this,
                 SIGNAL(busLost()));
}

void ServicePresence::ownerChanged(const QString&, const QString&, const QString& now) {
    if (now.isEmpty())
        emit went();
    else
        emit came();
}

} // namespace simulator
