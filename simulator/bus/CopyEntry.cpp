#include "simulator/bus/CopyEntry.h"

namespace simulator {

QDBusArgument& operator<<(QDBusArgument& argument, const CopyEntry& entry) {
    argument.beginStructure();
    argument << entry.category << entry.team << entry.identifier << entry.shortVersion << entry.version << entry.name
             << entry.state << entry.condition << entry.enabled << entry.active << entry.number << entry.application;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, CopyEntry& entry) {
    argument.beginStructure();
    argument >> entry.category >> entry.team >> entry.identifier >> entry.shortVersion >> entry.version >> entry.name >>
        entry.state >> entry.condition >> entry.enabled >> entry.active >> entry.number >> entry.application;
    argument.endStructure();
    return argument;
}

} // namespace simulator
