#include "tests/support/PrivateBus.h"

#include <QDir>
#include <QFile>
#include <QStringList>

#include <csignal>
#include <stdexcept>
#include <sys/prctl.h>

namespace tests {

namespace {

constexpr int startsWithinMs = 30'000;

void writeFile(const QString& path, const QString& text) {
    QFile file{path};
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0) {
        throw std::runtime_error{"cannot write " + path.toStdString()};
    }
}

} // namespace

PrivateBus::PrivateBus() : address_{QStringLiteral("unix:path=%1/bus").arg(folder_.path())} {
    QDir{folder_.path()}.mkdir(QStringLiteral("services"));
    daemon_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    start();
}

PrivateBus::~PrivateBus() {
    stop();
}

void PrivateBus::start() {
    daemon_.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
                                                  QStringLiteral("--config-file=") + writeConfiguration()});
    while (!daemon_.canReadLine()) {
        if (!daemon_.waitForReadyRead(startsWithinMs)) {
            throw std::runtime_error{"dbus-daemon does not start: " + daemon_.readAllStandardError().toStdString()};
        }
    }
    daemon_.readLine();
}

void PrivateBus::addActivatableService(const QString& name, const QString& command) {
    writeFile(folder_.filePath(QStringLiteral("services/%1.service").arg(name)),
              QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2\n").arg(name, command));
}

void PrivateBus::stop() {
    daemon_.kill();
    daemon_.waitForFinished();
    QFile::remove(folder_.filePath(QStringLiteral("bus")));
}

QString PrivateBus::writeConfiguration() const {
    auto path = folder_.filePath(QStringLiteral("bus.conf"));
    writeFile(path, QStringLiteral("<busconfig>"
                                   "<type>session</type>"
                                   "<listen>unix:path=%1/bus</listen>"
                                   "<servicedir>%1/services</servicedir>"
                                   "<policy context='default'>"
                                   "<allow send_destination='*'/><allow receive_sender='*'/><allow own='*'/>"
                                   "</policy>"
                                   "</busconfig>")
                        .arg(folder_.path()));
    return path;
}

} // namespace tests
