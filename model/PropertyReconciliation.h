#pragma once

#include "model/SysExtInfo.h"
#include "platform/Published.h"
#include "platform/SystemExtensions.h"

#include <vector>

namespace model {

/// Updates the record of the first copy's identifier from an answer to a properties request, and prints a line about
/// it. An empty answer, or one whose first copy has no record, changes and prints nothing.
///
/// Each field is one published change. Of several enabled copies, the last gives the version, and the last whose bundle
/// version is an integer gives the integer version. A flag is set if any copy has it. Other fields stay as they are.
void reconcile(const std::vector<platform::OSSystemExtensionProperties>& properties,
               platform::Published<std::vector<SysExtInfo>>& records);

} // namespace model
