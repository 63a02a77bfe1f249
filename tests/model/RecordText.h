#pragma once

#include "model/SysExtInfo.h"

#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace model {

/// Every field of a record on one line, for comparison: records themselves have no equality.
inline std::string textOf(const SysExtInfo& record) {
    std::ostringstream text;
    text << record.id << " '" << record.state << "'";
    if (record.present) text << " present";
    if (record.enabled) text << " enabled";
    if (record.awaiting) text << " awaiting";
    if (record.reboot) text << " reboot";
    if (record.uninst) text << " uninst";
    text << " '" << record.version << "' " << record.iconName << " '" << record.driverName << "' " << record.intversion;
    return text.str();
}

inline std::vector<std::string> textsOf(const std::vector<SysExtInfo>& records) {
    std::vector<std::string> texts;
    for (const auto& record : records)
        texts.push_back(textOf(record));
    return texts;
}

} // namespace model
