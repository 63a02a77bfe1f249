#include "tests/simulator/support/Program.h"

#include "tests/simulator/support/TestApplication.h"

#include <csignal>
#include <gtest/gtest.h>
#include <stdexcept>

namespace simulator::tests {

bool sendSignal(qint64 process, int signal) {
    return process > 0 && kill(static_cast<pid_t>(process), signal) == 0;
}

std::unique_ptr<QTemporaryFile> written(const QByteArray& text) {
    auto file = std::make_unique<QTemporaryFile>();
    EXPECT_TRUE(file->open());
    file->write(text);
    file->flush();
    return file;
}

void PrintTo(const Outcome& outcome, std::ostream* stream) {
    *stream << outcome.code << ", output <" << outcome.output << ">, errors <" << outcome.errors << '>';
}

Program::Program(const QString& path, const QStringList& arguments, const QProcessEnvironment& environment) {
    process_.setProcessEnvironment(environment);
    process_.start(path, arguments);
    if (!process_.waitForStarted()) throw std::runtime_error{"cannot start " + path.toStdString()};
}

Program::~Program() {
    if (!isRunning()) return;
    process_.kill();
    process_.waitForFinished();
}

bool Program::ended() {
    return until([this] { return !isRunning(); });
}

Outcome Program::outcome() {
    EXPECT_TRUE(ended());
    return {exitCode(), output().toStdString(), errors().toStdString()};
}

bool Program::printed(const QByteArray& text) {
    return until([this, &text] { return output().contains(text); });
}

int Program::exitCode() const {
    return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

const QByteArray& Program::output() {
    return output_ += process_.readAllStandardOutput();
}

const QByteArray& Program::errors() {
    return errors_ += process_.readAllStandardError();
}

void Program::forget() {
    output_.clear();
    errors_.clear();
}

} // namespace simulator::tests
