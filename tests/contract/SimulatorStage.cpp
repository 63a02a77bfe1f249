#include "Simulator1Proxy.h"
#include "platform/linux/SimulatorManager.h"
#include "simulator/bus/Types.h"
#include "tests/contract/ContractTest.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/QtTesting.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <stdexcept>
#include <sys/prctl.h>
#include <utility>

namespace contract {

namespace {

using Control = ComKelvraSimulator1ControlInterface;

constexpr QLatin1String connectionName{"the stage"};

template <typename Reply>
Reply must(Reply reply) {
    reply.waitForFinished();
    if (reply.isError()) ADD_FAILURE() << "the service refuses: " << reply.error().message().toStdString();
    return reply;
}

/// The folder in which the bundle of this program lies.
QString applicationsFolder() {
    return QDir{QCoreApplication::applicationDirPath() + QStringLiteral("/../../..")}.canonicalPath();
}

/// The built service on a bus of its own, as a process that ends with this.
class RunningService {
public:
    explicit RunningService(const QDBusConnection& bus, const QString& address) {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address);
        environment.insert(QStringLiteral("XDG_STATE_HOME"), state_.path());
        process_.setProcessEnvironment(environment);
        process_.setProcessChannelMode(QProcess::ForwardedChannels);
        process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        const QDBusServiceWatcher watcher{simulator::serviceName, bus};
        process_.start(SYSEXTD, QStringList{});
        const auto isThere = [&] { return bus.interface()->isServiceRegistered(simulator::serviceName).value(); };
        if (!tests::processEventsUntil([&] { return isThere() || process_.state() == QProcess::NotRunning; }) ||
            !isThere()) {
            throw std::runtime_error{"the service does not start"};
        }
    }
    RunningService(const RunningService&) = delete;
    RunningService& operator=(const RunningService&) = delete;
    ~RunningService() {
        process_.terminate();
        EXPECT_TRUE(process_.waitForFinished());
        EXPECT_EQ(process_.exitCode(), SIGTERM) << "the service ended by itself";
    }

private:
    QTemporaryDir state_;
    QProcess process_;
};

/// A connection that is closed when this goes.
class Connection {
public:
    explicit Connection(const QString& address) : bus_{QDBusConnection::connectToBus(address, connectionName)} {}
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { QDBusConnection::disconnectFromBus(connectionName); }

    const QDBusConnection& bus() const { return bus_; }

private:
    QDBusConnection bus_;
};

/// The manager of Linux in front of the built service. This process asks from inside a sealed bundle.
class SimulatorStage final : public Stage {
public:
    SimulatorStage() {
        // Each change at the service becomes an event of this process, after which it looks again.
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

    // What was submitted has reached the service once it answers a later request of the same client; and what it said
    // has been delivered once it answers one that it got when it had come to rest.
    void settle() override {
        askAndHear();
        EXPECT_TRUE(tests::processEventsUntil([this] { return isAtRest(); })) << "the service does not come to rest";
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
        EXPECT_TRUE(tests::processEventsUntil([&] { return !record.lines.empty(); })) << "the service does not answer";
    }

    tests::PrivateBus bus_;
    Connection connection_{bus_.address()};
    RunningService service_{connection_.bus(), bus_.address()};
    Control control_{simulator::serviceName, simulator::objectPath, connection_.bus()};
    platform::SimulatorManager manager_{bus_.address()};
};

} // namespace

std::unique_ptr<Stage> makeStage() {
    simulator::registerTypes();
    return std::make_unique<SimulatorStage>();
}

} // namespace contract
