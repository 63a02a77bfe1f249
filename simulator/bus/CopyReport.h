#pragma once

#include <QDBusArgument>
#include <QList>
#include <QString>

namespace simulator {

/// One copy of an extension as an application hears of it.
struct CopyReport {
    QString identifier;
    QString shortVersion;
    QString version;
    bool enabled = false;
    bool awaitingUserApproval = false;
    bool uninstalling = false;
};

QDBusArgument& operator<<(QDBusArgument& argument, const CopyReport& report);
const QDBusArgument& operator>>(const QDBusArgument& argument, CopyReport& report);

} // namespace simulator

Q_DECLARE_METATYPE(simulator::CopyReport)
