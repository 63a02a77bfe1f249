#include "tests/simulator/support/SimulatedMac.h"

#include "simulator/player/BusMac.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <csignal>

namespace simulator::tests {

// Applications -------------------------------------------------------------------------------------------------------

Application::Application(const QString& program, const QProcessEnvironment& environment)
    : process_{program, {}, environment} {
    EXPECT_TRUE(process_.printed("ready"));
}

void Application::order(const QStringList& words) {
    process_.write(player::lineOf(words));
}

void Application::submit(const QString& token, const QString& kind, const QString& identifier) {
    order({"submit", token, kind, identifier});
}

QStringList Application::lines() {
    QStringList heard;
    QByteArray output = process_.output();
    output.truncate(output.lastIndexOf('\n') + 1);
    for (const QByteArray& line : output.split('\n')) {
        QStringList words = player::wordsIn(line);
        const QString first = words.value(0);
        if (first == "told") words.removeFirst();
        if (first == "told" || first == "refused") heard += words.join(' ');
    }
    return heard;
}

bool Application::hears(const QString& line) {
    return until([&] {
        const QStringList heard = lines();
        return std::any_of(heard.begin(), heard.end(), [&](const QString& other) { return other.startsWith(line); });
    });
}

bool Application::kill() {
    return process_.signal(SIGKILL) && ended();
}

// The Mac ------------------------------------------------------------------------------------------------------------

SimulatedMac::SimulatedMac() {
    registerTypes();
    const QString bundle = applications() + "/Driver Manager.app";
    player::writeBundle(player::sampleApplication(), bundle, SUBMIT);
    program_ = player::programOf(bundle);
    bus_ = std::make_unique<::tests::PrivateBus>(environment());
    bus_->makeActivatable(serviceName, SYSEXTD);
    connection_ = bus_->connect();
    control_ = std::make_unique<Control>(serviceName, objectPath, connection_);
    watcher_ = std::make_unique<QDBusServiceWatcher>(serviceName, connection_);
    EXPECT_EQ(does({"applications", applications()}), "");
}

QProcessEnvironment SimulatedMac::environment() const {
    QProcessEnvironment environment = bus_ ? bus_->environment() : QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_STATE_HOME", folder());
    return environment;
}

std::unique_ptr<Application> SimulatedMac::application() const {
    return applicationAt(program_);
}

std::unique_ptr<Application> SimulatedMac::applicationAt(const QString& program) const {
    return std::make_unique<Application>(program, environment());
}

std::string SimulatedMac::does(const QStringList& words, const QByteArray& contents) {
    auto call = QDBusMessage::createMethodCall(serviceName, objectPath, controlInterfaceName, "Do");
    call.setArguments({words, contents});
    const QDBusMessage reply = connection_.call(call);
    if (reply.type() == QDBusMessage::ReplyMessage) return reply.arguments().value(0).toByteArray().toStdString();
    return reply.errorName().section('.', -1).toStdString();
}

std::vector<std::string> SimulatedMac::copies(const QString& identifier) {
    std::vector<std::string> lines;
    for (const CopyEntry& copy : must(control().ListCopies()).value()) {
        if (copy.identifier == identifier) lines.push_back((copy.version + " " + copy.condition).toStdString());
    }
    return lines;
}

uint SimulatedMac::processOfService() const {
    const QDBusReply<uint> process = connection_.interface()->servicePid(serviceName);
    EXPECT_TRUE(process.isValid());
    return process.value();
}

void SimulatedMac::signalService(int signal) const {
    ASSERT_TRUE(sendSignal(processOfService(), signal));
}

bool SimulatedMac::serviceIsGone() const {
    return until([&] { return !connection_.interface()->isServiceRegistered(serviceName).value(); });
}

QString copyOfStore(const QString& store, const QString& folder) {
    const QString image = folder + "/image.sqlite";
    for (const auto* const part : {"", "-wal"}) {
        QFile::remove(image + part);
        QFile::copy(store + part, image + part);
    }
    return image;
}

} // namespace simulator::tests
