#pragma once

#include "model/SysExtInfo.h"
#include "platform/Published.h"
#include "platform/SystemExtensions.h"

#include <vector>

namespace model {

/// Folds one answer to a properties request into the record that its first copy names, and prints a line about that
/// record. An empty answer, and one whose first copy is of no record, changes and prints nothing.
///
/// Each field is written in place, as one published change of its own. Of several enabled copies the last gives the
/// version, and the last whose bundle version is an integer gives the integer version; the flags add up. What an
/// answer does not speak of, a record keeps.
void reconcile(const std::vector<platform::OSSystemExtensionProperties>& properties,
               platform::Published<std::vector<SysExtInfo>>& records);

} // namespace model
