#include "tests/support/PrivateBus.h"

#include "tests/support/Descriptors.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QUuid>

#include <sys/prctl.h>
#include <sys/syscall.h>

#include <csignal>
#include <stdexcept>

namespace tests {

namespace {

constexpr int patience = 20'000;

constexpr auto configuration = R"(<busconfig>
  <type>session</type>
  <listen>unix:path=%1</listen>
  <servicedir>%2</servicedir>
  <limit name="max_replies_per_connection">50000</limit>
  <policy context="default">
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

/// Becomes readable when the process that owns the name ends, even if it is not a child; closed if there is none.
Descriptor processOf(const QString& name, const QDBusConnection& bus) {
    const QDBusReply<uint> process = bus.interface()->servicePid(name);
    return Descriptor{process.isValid() ? static_cast<int>(syscall(SYS_pidfd_open, process.value(), 0)) : -1};
}

} // namespace

PrivateBus::PrivateBus(const QProcessEnvironment& environment) : address_{"unix:path=" + path("bus")} {
    QDir{folder_.path()}.mkdir("services");
    write(path("bus.conf"), QString{configuration}.arg(path("bus"), path("services")));
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
    const Descriptor service = activatable_.isEmpty() ? Descriptor{-1} : processOf(activatable_, connect());
    daemon_.terminate();
    daemon_.waitForFinished(patience);
    pollfd end{service.get(), POLLIN, 0};
    if (service.get() >= 0) poll(&end, 1, patience);
    QFile::remove(path("bus"));
}

QString PrivateBus::path(const QString& name) const {
    return folder_.filePath(name);
}

void PrivateBus::start() {
    daemon_.start("dbus-daemon", {"--config-file=" + path("bus.conf"), "--nofork", "--print-address=1"});
    while (!daemon_.canReadLine())
        if (!daemon_.waitForReadyRead(patience)) throw std::runtime_error{"dbus-daemon: " + errors().toStdString()};
    daemon_.readLine();
}

} // namespace tests
