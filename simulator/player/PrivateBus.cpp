#include "simulator/player/PrivateBus.h"

#include "simulator/bus/Types.h"
#include "simulator/player/Mac.h"

#include <QDBusError>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>

#include <sys/prctl.h>
#include <unistd.h>

namespace simulator::player {

namespace {

constexpr int patience = 60'000;

constexpr auto configuration = R"(<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <servicedir>%1</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

constexpr auto activation = "[D-BUS Service]\nName=%1\nExec=\"%2/sysextd\"\n";

/// Its input is open as long as this process lives, and holds nothing. It ends the command under test, too.
constexpr auto keeping = R"(trap '' HUP INT TERM PIPE
folder=$(mktemp -d "${TMPDIR:-/tmp}/sysextctl-XXXXXX") || exit 1
echo "$folder"
cat >/dev/null
[ ! -s "$folder/command" ] || kill -s KILL -- -$(cat "$folder/command") 2>/dev/null
while [ -e "$folder" ]; do rm -rf "$folder" 2>/dev/null; done
)";

QByteArray firstLineOf(QProcess& process) {
    while (!process.canReadLine())
        if (!process.waitForReadyRead(patience)) return {};
    return process.readLine().trimmed();
}

} // namespace

// The folder ---------------------------------------------------------------------------------------------------------

ScratchFolder::ScratchFolder() {
    keeper_.setChildProcessModifier([] { setsid(); }); // what ends us with our whole group does not end it
    keeper_.start("/bin/sh", {"-c", keeping});
    path_ = QString::fromUtf8(firstLineOf(keeper_));
    if (path_.isEmpty()) throw NotDone{"a temporary folder cannot be made"};
}

ScratchFolder::~ScratchFolder() {
    keeper_.closeWriteChannel();
    keeper_.waitForFinished(patience);
}

// The bus ------------------------------------------------------------------------------------------------------------

PrivateBus::PrivateBus(const QString& programs) {
    writeFile(fileNamed("bus.conf"), QString{configuration}.arg(folder_.path()).toUtf8());
    writeFile(fileNamed(QString{serviceName} + ".service"), QString{activation}.arg(serviceName, programs).toUtf8());
    start();
    const QDBusConnection bus = QDBusConnection::connectToBus(address_, connectionName);
    if (!bus.isConnected()) throw NotDone{"a private bus: " + bus.lastError().message().toStdString()};
}

PrivateBus::~PrivateBus() {
    QDBusConnection::disconnectFromBus(connectionName);
    daemon_.kill();
    daemon_.waitForFinished(patience);
}

void PrivateBus::start() {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_STATE_HOME", fileNamed("state"));
    daemon_.setProcessEnvironment(environment);
    daemon_.setStandardErrorFile(fileNamed("complaints"));
    daemon_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    daemon_.start("dbus-daemon", {"--config-file=" + fileNamed("bus.conf"), "--nofork", "--print-address"});
    address_ = QString::fromUtf8(firstLineOf(daemon_));
    if (address_.isEmpty()) throw NotDone{"a private bus cannot be started: " + daemon_.errorString().toStdString()};
}

/// The bus notes there, too, what it does; the service's own lines begin with its name.
QString PrivateBus::lastComplaint() const {
    QFile file{fileNamed("complaints")};
    if (!file.open(QIODevice::ReadOnly)) return {};
    QString last;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (line.startsWith("sysextd: ")) last = QString::fromUtf8(line);
    return last;
}

void writeFile(const QString& path, const QByteArray& contents) {
    QFile file{path};
    const bool isWritten = QDir{}.mkpath(QFileInfo{path}.path()) && file.open(QIODevice::WriteOnly) &&
                           file.write(contents) >= 0 && file.flush();
    if (!isWritten) throw NotDone{path.toStdString() + ": " + file.errorString().toStdString()};
}

} // namespace simulator::player
