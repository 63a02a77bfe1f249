#pragma once

#include <QDBusArgument>
#include <QList>
#include <QString>

namespace simulator {

/// One line of the list of copies, column by column; see ListCopies in the interface's description.
struct CopyEntry {
    QString category;
    QString team;
    QString identifier;
    QString shortVersion;
    QString version;
    QString name;
    QString state;
    QString condition;
    bool enabled = false;
    bool active = false;
    qlonglong number = 0;
    QString application;
};

QDBusArgument& operator<<(QDBusArgument& argument, const CopyEntry& entry);
const QDBusArgument& operator>>(const QDBusArgument& argument, CopyEntry& entry);

} // namespace simulator

Q_DECLARE_METATYPE(simulator::CopyEntry)
