#pragma once

#include <QDBusArgument>
#include <QList>
#include <QString>

namespace simulator {

/// One request that has not ended; see ListRequests in the interface's description.
struct RequestEntry {
    qlonglong number = 0;
    QString client;
    QString token;
    QString application;
    QString kind;
    QString identifier;
    QString stage;
    qlonglong since = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const RequestEntry& entry);
const QDBusArgument& operator>>(const QDBusArgument& argument, RequestEntry& entry);

} // namespace simulator

Q_DECLARE_METATYPE(simulator::RequestEntry)
