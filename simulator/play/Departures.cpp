#include "simulator/play/Departures.h"

#include "simulator/scenario/Mac.h"

#include <QTimer>

namespace simulator::play {

namespace {

constexpr int patience = 60'000;

} // namespace

Departures::Departures(const QDBusConnection& bus) {
    watcher_.setConnection(bus);
    watcher_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&watcher_, &QDBusServiceWatcher::serviceUnregistered, this, [this](const QString& name) {
        present_.remove(name);
        watcher_.removeWatchedService(name);
        loop_.quit();
    });
}

void Departures::watch(const QString& name) {
    present_.insert(name);
    watcher_.addWatchedService(name);
}

void Departures::await(const QString& name) {
    QTimer timer;
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, &loop_, &QEventLoop::quit);
    timer.start(patience);
    while (present_.contains(name) && timer.isActive())
        loop_.exec();
    if (present_.contains(name)) throw scenario::NotDone{"an application does not leave the bus"};
}

} // namespace simulator::play
