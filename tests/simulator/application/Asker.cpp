#include "tests/simulator/application/Asker.h"

#include "tests/simulator/support/Until.h"

#include <stdexcept>

namespace simulator::tests {

Asker::Asker(const QString& program, const QProcessEnvironment& environment) {
    process_.setProcessEnvironment(environment);
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(program, QStringList{});
    if (!process_.waitForStarted() || !hears("ready")) throw std::runtime_error{"cannot start the asker"};
}

Asker::~Asker() {
    kill();
}

void Asker::tell(const QString& line) {
    process_.write(line.toUtf8() + '\n');
}

bool Asker::hears(const QString& line) {
    return until([&] {
        output_ += process_.readAllStandardOutput();
        return QString::fromUtf8(output_).split('\n').contains(line);
    });
}

QStringList Asker::lines() {
    output_ += process_.readAllStandardOutput();
    return QString::fromUtf8(output_).split('\n', Qt::SkipEmptyParts).mid(1);
}

QStringList Asker::takeLines() {
    output_ += process_.readAllStandardOutput();
    const qsizetype end = output_.lastIndexOf('\n') + 1;
    const QString whole = QString::fromUtf8(output_.left(end));
    output_.remove(0, end);
    return whole.split('\n', Qt::SkipEmptyParts);
}

void Asker::kill() {
    if (process_.state() == QProcess::NotRunning) return;
    process_.kill();
    process_.waitForFinished();
}

} // namespace simulator::tests
