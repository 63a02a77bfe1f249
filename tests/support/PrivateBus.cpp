#include "tests/support/PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QUuid>

#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace tests {

namespace {

constexpr int patience = 20'000;

constexpr auto configuration = R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=%1</listen>
  <servicedir>%2</servicedir>
  <limit name="max_replies_per_connection">50000</limit>
  <policy context="default">
    <allow user="*"/>
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

void write(const QString& path, const QString& text) {
    QFile file{path};
    const auto bytes = text.toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error{"cannot write " + path.toStdString()};
}

/// A process that need not be a child of this one; none if its number is 0.
class RunningProcess {
public:
    explicit RunningProcess(uint number)
        : descriptor_{number == 0 ? -1 : static_cast<int>(syscall(SYS_pidfd_open, number, 0))} {}
    ~RunningProcess() {
        if (descriptor_ >= 0) close(descriptor_);
    }
    RunningProcess(const RunningProcess&) = delete;
    RunningProcess& operator=(const RunningProcess&) = delete;

    void waitForEnd() const {
        pollfd process{descriptor_, POLLIN, 0};
        if (descriptor_ >= 0) poll(&process, 1, patience);
    }

private:
    int descriptor_;
};

} // namespace

PrivateBus::PrivateBus(const QProcessEnvironment& environment) : address_{"unix:path=" + path("bus")} {
    QDir{folder_.path()}.mkdir("services");
    writeConfiguration();
    daemon_.setProcessEnvironment(environment);
    daemon_.setStandardErrorFile(path("errors"));
    daemon_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    start();
}

PrivateBus::~PrivateBus() {
    stop();
    for (const auto& name : connections_)
        QDBusConnection::disconnectFromBus(name);
}

QDBusConnection PrivateBus::connect() {
    connections_ += QUuid::createUuid().toString();
    auto connection = QDBusConnection::connectToBus(address_, connections_.last());
    if (!connection.isConnected()) throw std::runtime_error{connection.lastError().message().toStdString()};
    return connection;
}

void PrivateBus::makeActivatable(const QString& name, const QString& program) {
    activatable_ = name;
    write(path("services/" + name + ".service"),
          QStringLiteral("[D-BUS Service]\nName=%1\nExec=\"%2\"\n").arg(name, program));
    const auto reload = QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                       "org.freedesktop.DBus", "ReloadConfig");
    connect().call(reload);
}

QProcessEnvironment PrivateBus::environment() const {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DBUS_SESSION_BUS_ADDRESS", address_);
    environment.insert("XDG_RUNTIME_DIR", folder_.path());
    return environment;
}

QByteArray PrivateBus::errors() const {
    QFile file{path("errors")};
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray{};
}

void PrivateBus::stop() {
    if (daemon_.state() == QProcess::NotRunning) return;
    const RunningProcess service{startedService()};
    daemon_.terminate();
    daemon_.waitForFinished(patience);
    service.waitForEnd();
    QFile::remove(path("bus"));
}

/// The process of the service that the bus started; 0 for none.
uint PrivateBus::startedService() {
    if (activatable_.isEmpty()) return 0;
    const QDBusReply<uint> process = connect().interface()->servicePid(activatable_);
    return process.isValid() ? process.value() : 0;
}

QString PrivateBus::path(const QString& name) const {
    return folder_.filePath(name);
}

void PrivateBus::writeConfiguration() const {
    write(path("bus.conf"), QString{configuration}.arg(path("bus"), path("services")));
}

void PrivateBus::start() {
    daemon_.start("dbus-daemon", {"--config-file=" + path("bus.conf"), "--nofork", "--print-address=1"});
    while (!daemon_.canReadLine())
        if (!daemon_.waitForReadyRead(patience)) throw std::runtime_error{"dbus-daemon: " + errors().toStdString()};
    daemon_.readLine();
}

} // namespace tests
