#pragma once

#include "simulator/sysextctl/CommandFailure.h"

#include <QDBusError>
#include <QDBusPendingReply>

namespace simulator::ctl {

/// What an error reply means to a person, and what the program ends with.
CommandFailure failureOf(const QDBusError& error);

/// Waits for the answer of a call. Throws CommandFailure if it is an error.
template <typename... Values>
QDBusPendingReply<Values...> answered(QDBusPendingReply<Values...> reply) {
    reply.waitForFinished();
    if (reply.isError()) throw failureOf(reply.error());
    return reply;
}

} // namespace simulator::ctl
