#pragma once

#include "Simulator1Proxy.h"

#include "simulator/client/ServicePresence.h"
#include "simulator/sysextctl/Command.h"
#include "simulator/sysextctl/CommandFailure.h"

#include <QDBusConnection>
#include <QEventLoop>
#include <QObject>

#include <optional>

namespace simulator::ctl {

/// Waits until the service's list shows an extension in a state. It listens before it looks, so that nothing is missed
/// in between. A service that dies meanwhile is asked again, which starts it where the bus knows how; where it does
/// not, the waiting goes on until the service is back or the time is over.
class Waiting : public QObject {
public:
    Waiting(const QDBusConnection& bus, WaitFor wanted);

    /// Runs an event loop until the state is reached. Throws CommandFailure if it is not.
    void run();

private:
    void checkIdentifier();
    void look();
    void read(const QDBusPendingReply<QList<CopyEntry>>& answer);
    void lookFailed(const QDBusError& error);
    void finish();
    void fail(const CommandFailure& failure);

    WaitFor wanted_;
    ComKelvraSimulator1ControlInterface control_;
    ServicePresence presence_;
    QEventLoop loop_;
    bool looking_ = false;
    bool changedMeanwhile_ = false;
    int failedLooks_ = 0;
    std::optional<CommandFailure> failure_;
};

} // namespace simulator::ctl
