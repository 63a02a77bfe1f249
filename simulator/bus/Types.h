#pragma once

#include "simulator/bus/CopyEntry.h"
#include "simulator/bus/CopyReport.h"
#include "simulator/bus/RequestEntry.h"
#include "simulator/bus/SwitchEntry.h"

namespace simulator {

/// Makes the types known to Qt's D-Bus layer. To be called once, before the first proxy or adaptor is made.
void registerTypes();

} // namespace simulator
