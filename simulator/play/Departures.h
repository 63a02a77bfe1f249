#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QObject>
#include <QSet>
#include <QString>

namespace simulator::play {

/// Who has left the bus, of those that were watched.
class Departures : public QObject {
public:
    explicit Departures(const QDBusConnection& bus);

    /// name: a unique name that is on the bus, at the latest when the next call over this connection is answered.
    void watch(const QString& name);
    /// Runs an event loop until it has left the bus; from then on everyone has been told. Throws scenario::NotDone if
    /// it stays for a minute.
    void await(const QString& name);

private:
    QDBusServiceWatcher watcher_;
    QEventLoop loop_;
    QSet<QString> present_;
};

} // namespace simulator::play
