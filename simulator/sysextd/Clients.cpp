#include "simulator/sysextd/Clients.h"

#include "simulator/disk/RealDisk.h"

#include <QDBusConnectionInterface>
#include <QFile>

namespace simulator {

Clients::Clients(const QDBusConnection& bus, uid_t owner) : bus_{bus}, owner_{owner} {
    watcher_.setConnection(bus_);
    watcher_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&watcher_, &QDBusServiceWatcher::serviceUnregistered, this, &Clients::forget);
}

bool Clients::isOurs(const QString& name) {
    const auto known = client(name);
    return known && known->user == owner_;
}

QString Clients::bundleOf(const QString& name) {
    const auto known = client(name);
    if (!known) return {};
    const QString program = QFile::symLinkTarget(QString{"/proc/%1/exe"}.arg(known->process));
    return QString::fromStdString(bundleOfFile(program.toStdString()));
}

/// It is watched before it is looked up, so that it cannot leave unseen in between.
std::optional<Clients::Client> Clients::client(const QString& name) {
    const auto found = known_.constFind(name);
    if (found != known_.cend()) return *found;
    watcher_.addWatchedService(name);
    if (const auto client = lookUp(name)) return *known_.insert(name, *client);
    watcher_.removeWatchedService(name);
    return std::nullopt;
}

std::optional<Clients::Client> Clients::lookUp(const QString& name) const {
    const QDBusReply<uint> user = bus_.interface()->serviceUid(name);
    const QDBusReply<uint> process = bus_.interface()->servicePid(name);
    if (!user.isValid() || !process.isValid()) return std::nullopt;
    return Client{user.value(), process.value()};
}

void Clients::forget(const QString& name) {
    watcher_.removeWatchedService(name);
    if (known_.remove(name) > 0) emit left(name);
}

} // namespace simulator
