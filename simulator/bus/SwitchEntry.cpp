#include "simulator/bus/SwitchEntry.h"

namespace simulator {

QDBusArgument& operator<<(QDBusArgument& argument, const SwitchEntry& entry) {
    argument.beginStructure();
    argument << entry.name << entry.value << entry.values << entry.meaning;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, SwitchEntry& entry) {
    argument.beginStructure();
    argument >> entry.name >> entry.value >> entry.values >> entry.meaning;
    argument.endStructure();
    return argument;
}

} // namespace simulator
