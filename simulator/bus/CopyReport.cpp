#include "simulator/bus/CopyReport.h"

namespace simulator {

QDBusArgument& operator<<(QDBusArgument& argument, const CopyReport& report) {
    argument.beginStructure();
    argument << report.identifier << report.shortVersion << report.version << report.enabled
             << report.awaitingUserApproval << report.uninstalling;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, CopyReport& report) {
    argument.beginStructure();
    argument >> report.identifier >> report.shortVersion >> report.version >> report.enabled >>
        report.awaitingUserApproval >> report.uninstalling;
    argument.endStructure();
    return argument;
}

} // namespace simulator
