#include "simulator/sysextctl/ServiceError.h"

#include "simulator/bus/Names.h"
#include "simulator/sysextctl/OneLine.h"

namespace simulator::ctl {

namespace {

bool isNotUnderstood(const QString& name) {
    const QString prefix{errorPrefix};
    return name == prefix + "UnknownIdentifier" || name == prefix + "InvalidArgument";
}

/// The bus tried to start the service and failed.
bool cannotBeStarted(const QString& name) {
    return name.startsWith("org.freedesktop.DBus.Error.Spawn.");
}

QString lineOf(const QDBusError& error) {
    if (cannotBeStarted(error.name()))
        return QStringLiteral("the simulated extension service cannot be started; running sysextd shows why");
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
        return QStringLiteral("the simulated extension service is not running, and nothing here starts it");
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return QStringLiteral("the simulated extension service went away, or gave no answer in time");
    default:
        return error.message().isEmpty() ? error.name() : error.message();
    }
}

} // namespace

CommandFailure failureOf(const QDBusError& error) {
    return {isNotUnderstood(error.name()) ? exitCode::notUnderstood : exitCode::notDone, oneLine(lineOf(error))};
}

} // namespace simulator::ctl
