#include "simulator/bus/RequestEntry.h"

namespace simulator {

QDBusArgument& operator<<(QDBusArgument& argument, const RequestEntry& entry) {
    argument.beginStructure();
    argument << entry.number << entry.client << entry.token << entry.application << entry.kind << entry.identifier
             << entry.stage << entry.since;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, RequestEntry& entry) {
    argument.beginStructure();
    argument >> entry.number >> entry.client >> entry.token >> entry.application >> entry.kind >> entry.identifier >>
        entry.stage >> entry.since;
    argument.endStructure();
    return argument;
}

} // namespace simulator
