#pragma once

#include "simulator/sysextctl/Verbs.h"

namespace simulator::ctl {

/// Reads the arguments of the verb "fault".
Command readFault(const Verb& verb, const QStringList& given);

} // namespace simulator::ctl
