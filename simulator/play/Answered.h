#pragma once

#include "simulator/scenario/Mac.h"

#include <QDBusError>
#include <QDBusPendingReply>

namespace simulator::play {

/// Waits for the answer of a call. Throws scenario::NotDone if it is an error.
template <typename... Values>
QDBusPendingReply<Values...> answered(QDBusPendingReply<Values...> reply) {
    reply.waitForFinished();
    if (reply.isError()) throw scenario::NotDone{reply.error().message().toStdString()};
    return reply;
}

} // namespace simulator::play
