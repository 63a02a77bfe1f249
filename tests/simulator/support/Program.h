#pragma once

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryFile>

#include <memory>
#include <ostream>
#include <string>

namespace simulator::tests {

/// Sends a signal to one process, never to a group: false for what is no process's number, and where there is none.
[[nodiscard]] bool sendSignal(qint64 process, int signal);

/// A file of that text, which goes with what is returned.
std::unique_ptr<QTemporaryFile> written(const QByteArray& text);

/// What a program left behind.
struct Outcome {
    /// Its exit status; -1 if it crashed.
    int code = -1;
    std::string output;
    std::string errors;

    friend bool operator==(const Outcome&, const Outcome&) = default;
};

void PrintTo(const Outcome& outcome, std::ostream* stream);

/// It was done, and there was nothing to say.
inline const Outcome silence{0, "", ""};

/// What the command line leaves behind when it fails with that status and that one line.
inline Outcome failed(int code, const std::string& line) {
    return {code, "", "sysextctl: " + line + "\n"};
}

/// A program under test. Its process is killed when this goes.
class Program {
public:
    /// Returns once it runs. Throws where it cannot be started.
    Program(const QString& path, const QStringList& arguments, const QProcessEnvironment& environment);
    ~Program();

    /// Handles this process's events until the program has ended; says whether it did so in time.
    [[nodiscard]] bool ended();
    /// Waits for its end, and says what it left behind.
    Outcome outcome();
    /// Handles events until its standard output holds the text.
    [[nodiscard]] bool printed(const QByteArray& text);

    bool isRunning() const { return process_.state() != QProcess::NotRunning; }
    qint64 process() const { return process_.processId(); }
    [[nodiscard]] bool signal(int number) const { return sendSignal(process(), number); }
    /// Valid after it has ended; -1 if it crashed.
    int exitCode() const;
    /// All of it, from the beginning or since forget().
    const QByteArray& output();
    const QByteArray& errors();
    /// Forgets what it has printed so far.
    void forget();
    /// To its standard input; does not wait until it was read.
    void write(const QByteArray& text) { process_.write(text); }

private:
    QProcess process_;
    QByteArray output_;
    QByteArray errors_;
};

} // namespace simulator::tests
