#pragma once

#include "simulator/bus/Types.h"
#include "simulator/core/Machine.h"

#include <QDBusMessage>

namespace simulator {

/// In the order of the printed list.
QList<CopyEntry> copyEntries(const State& state);
QList<RequestEntry> requestEntries(const Machine& machine);
QList<SwitchEntry> switchEntries(const Settings& settings);
/// The signal that carries an answer to its client.
QDBusMessage messageOf(const Answer& answer);
/// The full name of the error reply.
QString errorName(Refusal::Kind kind);

} // namespace simulator
