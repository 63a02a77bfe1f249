#pragma once

#include "Simulator1Proxy.h"

#include "simulator/player/ClientProcess.h"
#include "simulator/player/Mac.h"
#include "simulator/player/PrivateBus.h"

#include <map>
#include <memory>

namespace simulator::player {

/// A Mac on a bus of its own. Applications are real bundles in a temporary folder, which stands for the disk, and real
/// processes that run in them; the service finds out by itself who asks. Needs a QCoreApplication. Throws NotDone.
class BusMac final : public Mac {
public:
    /// programs: the folder in which sysextd and submit lie.
    explicit BusMac(const QString& programs);

    WordList copies(const std::string& identifier) override;
    WordList requests() override;

private:
    void write(const BundleOnDisk& bundle) override;
    void remove(const BundleOnDisk& bundle) override;
    std::string start(const std::string& application) override;
    void end(const std::string& application) override;
    void submit(const std::string& application, const std::string& token, const Ask& ask) override;
    void reply(const std::string& application, const std::string& token, bool replace) override;
    void act(const Saying& saying) override;
    void rest() override;

    /// Where it lies on the real disk.
    QString real(const std::string& path) const;
    /// Waits for the answer of a call.
    template <typename Value>
    Value answered(QDBusPendingReply<Value> reply) const;
    void awaitStandstill();
    /// The open requests, also of a service that has just died and come back.
    QList<RequestEntry> openRequests();
    /// Tells what the applications heard; says whether there was anything.
    bool listen();

    PrivateBus bus_;
    QString submit_;
    ComKelvraSimulator1ControlInterface control_;
    std::map<std::string, std::unique_ptr<ClientProcess>> processes_;
};

} // namespace simulator::player
