#pragma once

#include <QDBusArgument>
#include <QList>
#include <QString>
#include <QStringList>

namespace simulator {

/// One switch of the simulated system; see ListSwitches in the interface's description.
struct SwitchEntry {
    QString name;
    QString value;
    QStringList values;
    QString meaning;
};

QDBusArgument& operator<<(QDBusArgument& argument, const SwitchEntry& entry);
const QDBusArgument& operator>>(const QDBusArgument& argument, SwitchEntry& entry);

} // namespace simulator

Q_DECLARE_METATYPE(simulator::SwitchEntry)
