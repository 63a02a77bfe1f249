#include "tests/simulator/sysextd/TheService.h"

#include "tests/simulator/application/SampleBundle.h"
#include "tests/simulator/support/Program.h"
#include "tests/simulator/support/Until.h"

#include <QDBusConnectionInterface>
#include <QDir>

#include <csignal>

namespace simulator::tests {

TheService::TheService() {
    registerTypes();
    QDir{}.mkpath(applications());
    program_ = makeSampleBundle(applications() + "/Driver Manager.app", ASKER);
    bus_ = std::make_unique<::tests::PrivateBus>(environment());
    bus_->makeActivatable(serviceName, SYSEXTD);
    connection_ = bus_->connect();
    control_ = std::make_unique<Control>(serviceName, objectPath, connection_);
    watcher_ = std::make_unique<QDBusServiceWatcher>(serviceName, connection_);
    must(control().SetApplicationsFolders({applications()}));
}

QProcessEnvironment TheService::environment() const {
    QProcessEnvironment environment = bus_ ? bus_->environment() : QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_STATE_HOME", stateFolder());
    return environment;
}

std::unique_ptr<Asker> TheService::strayProgram() {
    return std::make_unique<Asker>(ASKER, environment());
}

QString TheService::errorOf(QDBusPendingReply<> reply) {
    reply.waitForFinished();
    return reply.isError() ? reply.error().name().mid(QString{errorPrefix}.size()) : "none";
}

std::vector<std::string> TheService::copies(const QString& identifier) {
    std::vector<std::string> lines;
    for (const CopyEntry& copy : must(control().ListCopies()).value()) {
        if (copy.identifier == identifier) lines.push_back((copy.version + " " + copy.condition).toStdString());
    }
    return lines;
}

uint TheService::processOfService() {
    const QDBusReply<uint> process = connection_.interface()->servicePid(serviceName);
    EXPECT_TRUE(process.isValid());
    return process.value();
}

void TheService::signalService(int signal) {
    ASSERT_TRUE(sendSignal(processOfService(), signal));
}

bool TheService::serviceIsGone() {
    return until([&] { return !connection_.interface()->isServiceRegistered(serviceName).value(); });
}

} // namespace simulator::tests
