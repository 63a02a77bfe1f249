#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace simulator::player {

/// The bundle of the application that a command runs: the first word that is a file in one counts, so that another
/// program may start it. Empty if there is none.
QString bundleOfCommand(const QStringList& command);

/// The application under test: a program that a scenario starts, and everything that it starts. What it prints goes to
/// standard error. Throws NotDone.
class Command {
public:
    /// note: a file that names its process group while it runs, for whoever has to end it.
    Command(const QStringList& command, const QString& busAddress, const QString& note);
    ~Command();
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    /// Stops it first, if it runs.
    void start();
    /// Ends it. Throws if it had failed before, and no one has asked for its status.
    void stop();
    bool hasEnded();
    /// Of a command that has ended: its exit status, or 128 and the number of the signal that ended it.
    int takeStatus();
    /// To wait for its end.
    const QProcess& process() const { return process_; }

private:
    int status() const;
    void end();

    QProcess process_;
    QString note_;
    qint64 group_ = 0;
    bool isStatusTaken_ = true;
};

} // namespace simulator::player
