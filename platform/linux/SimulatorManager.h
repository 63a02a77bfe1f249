#pragma once

#include "platform/SystemExtensions.h"
#include "platform/linux/SimulatorAnswer.h"

#include <QString>

#include <map>
#include <memory>

namespace platform {

class SimulatorClient;

/// The manager of a system without an extension service: it asks the simulator, over a message bus.
///
/// It connects at a submission, and connects anew at the next once the bus has gone. Whatever goes wrong between here
/// and the service fails the request with the code "unknown". When the simulated machine restarts, the application
/// ends with exitStatusOfRestart.
class SimulatorManager final : public OSSystemExtensionManager {
public:
    /// A manager on the bus at `busAddress`. It goes before the QCoreApplication does, or calls close().
    explicit SimulatorManager(QString busAddress);
    ~SimulatorManager() override;

    void submitRequest(std::shared_ptr<OSSystemExtensionRequest> request) override;

    /// Leaves the bus and forgets every request, unanswered.
    void close();

private:
    using Request = std::shared_ptr<OSSystemExtensionRequest>;

    void connectToBus();
    void answered(const QString& token, SimulatorAnswer answer);
    void deliver(const QString& token, const Request& request, SimulatorAnswer answer);

    QString busAddress_;
    quint64 lastToken_ = 0;
    std::map<QString, Request> requests_;
    std::shared_ptr<SimulatorClient> client_;
};

} // namespace platform
