#pragma once

#include "simulator/sysextctl/Commands.h"

#include <string>

namespace simulator::ctl {

/// The help of the whole program.
std::string help();
/// The help of one verb.
std::string help(const Command& command);

} // namespace simulator::ctl
