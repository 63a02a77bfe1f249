#pragma once

#include "simulator/sysextctl/Command.h"

#include <QStringList>

namespace simulator::ctl {

/// Reads what was typed after the program's name. Throws CommandFailure, with the one line that says what was not
/// understood.
Command readCommandLine(const QStringList& words);

} // namespace simulator::ctl
