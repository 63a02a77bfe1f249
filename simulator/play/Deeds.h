#pragma once

#include "Simulator1Proxy.h"

#include "simulator/scenario/Deed.h"

#include <QDBusPendingCall>
#include <QDBusPendingReply>

namespace simulator::play {

/// Calls the service to do it.
QDBusPendingReply<> callOf(ComKelvraSimulator1ControlInterface& control, const scenario::Deed& deed);

} // namespace simulator::play
