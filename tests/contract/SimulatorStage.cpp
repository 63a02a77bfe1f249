#include "Simulator1Proxy.h"
#include "platform/linux/SimulatorManager.h"
#include "simulator/bus/Types.h"
#include "tests/contract/ContractTest.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/QtTesting.h"

#include <QCoreApplication>
#include <QDBusPendingReply>
#include <QDir>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>

namespace contract {

namespace {

using Control = ComKelvraSimulator1ControlInterface;

template <typename Reply>
Reply must(Reply reply) {
    reply.waitForFinished();
    if (reply.isError()) ADD_FAILURE() << "the service refuses: " << reply.error().message().toStdString();
    return reply;
}

/// The folder with the bundle of this program.
QString applicationsFolder() {
    return QDir{QCoreApplication::applicationDirPath() + QStringLiteral("/../../..")}.canonicalPath();
}

/// The manager of Linux with the built service. This process is in a sealed bundle.
class SimulatorStage final : public Stage {
public:
    SimulatorStage() {
        bus_.makeActivatable(simulator::serviceName, SYSEXTD);
        // Each change of the service wakes this process, which then checks again.
        QObject::connect(&control_, &Control::Changed, &control_, [] {});
        act({"applications", applicationsFolder().toStdString()});
    }

    platform::OSSystemExtensionManager& manager() override { return manager_; }

    void act(const std::vector<std::string>& words) override {
        QStringList list;
        for (const auto& word : words)
            list << QString::fromStdString(word);
        must(control_.Do(list, {}));
    }

    // The service has received all submissions once it answers a later request of the same client. All its answers
    // have been delivered once it answers a request that it received at rest.
    void settle() override {
        askAndHear();
        EXPECT_TRUE(tests::until([this] { return isAtRest(); })) << "the service does not come to rest";
        askAndHear();
    }

private:
    bool isAtRest() {
        const auto requests = must(control_.ListRequests()).value();
        return std::all_of(requests.cbegin(), requests.cend(), [](const simulator::RequestEntry& request) {
            return request.stage == QLatin1String{"user"} || request.stage == QLatin1String{"authorization"} ||
                   request.stage == QLatin1String{"silent"};
        });
    }

    void askAndHear() {
        Record record;
        const auto listener = std::make_shared<Listener>("the stage", record);
        const auto request =
            OSSystemExtensionRequest::propertiesRequestForExtension(nobody, platform::DispatchQueue::main());
        request->setDelegate(listener);
        manager_.submitRequest(request);
        EXPECT_TRUE(tests::until([&] { return !record.lines.empty(); })) << "the service does not answer";
    }

    QProcessEnvironment environment() const {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_STATE_HOME"), state_.path());
        return environment;
    }

    const QTemporaryDir state_;
    tests::PrivateBus bus_{environment()};
    Control control_{simulator::serviceName, simulator::objectPath, bus_.connect()};
    platform::SimulatorManager manager_{bus_.address()};
};

} // namespace

std::unique_ptr<Stage> makeStage() {
    simulator::registerTypes();
    return std::make_unique<SimulatorStage>();
}

} // namespace contract
