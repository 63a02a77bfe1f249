#pragma once

#include "Simulator1Proxy.h"

#include "simulator/client/ServicePresence.h"
#include "simulator/sysextctl/CommandFailure.h"

#include <QDBusConnection>
#include <QEventLoop>
#include <QObject>
#include <QSocketNotifier>

#include <optional>

namespace simulator::ctl {

/// One line of what is watched: the clock in seconds, the extension if it is about one, what happened.
QString eventLine(qint64 time, const QString& identifier, const QString& text);

/// Prints what the service tells until the bus or whoever reads it is gone; a service that dies and comes back is part
/// of it.
class Watching : public QObject {
public:
    explicit Watching(const QDBusConnection& bus);

    /// Runs an event loop. Throws CommandFailure, which says why the watching is over.
    void run();

private:
    void write(const QString& line);
    void end(const CommandFailure& failure);

    ComKelvraSimulator1ControlInterface control_;
    ServicePresence presence_;
    /// Speaks up when whoever reads what is written has gone.
    QSocketNotifier reader_;
    QEventLoop loop_;
    std::optional<CommandFailure> failure_;
};

} // namespace simulator::ctl
