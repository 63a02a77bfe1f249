#include "simulator/player/Command.h"

#include "simulator/disk/RealDisk.h"
#include "simulator/player/Mac.h"

#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>

#include <csignal>
#include <string>

#include <sys/prctl.h>
#include <unistd.h>

namespace simulator::player {

namespace {

/// How long it may take to end by itself.
constexpr int patience = 10'000;

/// The note is there before the command runs, so that whoever has to end it always finds it.
constexpr auto noteAndRun = R"(echo $$ >"$0" && exec "$@")";

void prepareProcess() {
    setsid(); // a group of its own, to be ended as one
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(STDERR_FILENO, STDOUT_FILENO);
}

} // namespace

QString bundleOfCommand(const QStringList& command) {
    for (const QString& word : command) {
        const QFileInfo file{word};
        const std::string bundle = bundleOfFile(file.canonicalFilePath().toStdString());
        if (file.isFile() && !bundle.empty()) return QString::fromStdString(bundle);
    }
    return {};
}

Command::Command(const QStringList& command, const QString& busAddress, const QString& note) : note_{note} {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DBUS_SESSION_BUS_ADDRESS", busAddress);
    process_.setProcessEnvironment(environment);
    process_.setProcessChannelMode(QProcess::ForwardedChannels);
    process_.setStandardInputFile(QProcess::nullDevice());
    process_.setChildProcessModifier(prepareProcess);
    process_.setProgram("/bin/sh");
    process_.setArguments(QStringList{"-c", noteAndRun, note} + command);
}

Command::~Command() {
    end();
}

void Command::start() {
    stop();
    process_.start();
    if (!process_.waitForStarted(patience))
        throw NotDone{"the command cannot be started: " + process_.errorString().toStdString()};
    group_ = process_.processId();
    isStatusTaken_ = false;
}

void Command::stop() {
    const bool hasFailed = !isStatusTaken_ && hasEnded() && status() != 0;
    end();
    isStatusTaken_ = true;
    if (hasFailed) throw NotDone{"the command exited with " + std::to_string(status())};
}

bool Command::hasEnded() {
    return process_.state() == QProcess::NotRunning || process_.waitForFinished(0);
}

int Command::takeStatus() {
    isStatusTaken_ = true;
    return status();
}

int Command::status() const {
    return process_.exitCode() + (process_.exitStatus() == QProcess::CrashExit ? 128 : 0);
}

/// Its children may outlive it.
void Command::end() {
    if (group_ == 0) return;
    const auto group = static_cast<pid_t>(-group_);
    kill(group, SIGTERM);
    if (!hasEnded()) process_.waitForFinished(patience);
    kill(group, SIGKILL);
    process_.waitForFinished(patience);
    QFile::remove(note_);
    group_ = 0;
}

} // namespace simulator::player
