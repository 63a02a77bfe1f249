#pragma once

#include "simulator/sysextctl/Command.h"

#include <QDBusConnection>
#include <QString>

namespace simulator::ctl {

/// Plays the scenario, on a Mac in this process or on that of the service on the bus. Yields the line that says that it
/// went well; throws CommandFailure if it did not, or if the file cannot be understood.
QString play(const Play& command, const QDBusConnection& bus);

} // namespace simulator::ctl
