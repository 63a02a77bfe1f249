#include "simulator/bus/Types.h"

#include <QDBusMetaType>

namespace simulator {

void registerTypes() {
    qDBusRegisterMetaType<CopyReport>();
    qDBusRegisterMetaType<QList<CopyReport>>();
    qDBusRegisterMetaType<CopyEntry>();
    qDBusRegisterMetaType<QList<CopyEntry>>();
    qDBusRegisterMetaType<RequestEntry>();
    qDBusRegisterMetaType<QList<RequestEntry>>();
    qDBusRegisterMetaType<SwitchEntry>();
    qDBusRegisterMetaType<QList<SwitchEntry>>();
}

} // namespace simulator
