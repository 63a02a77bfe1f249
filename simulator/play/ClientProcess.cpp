#include "simulator/play/ClientProcess.h"

#include "simulator/scenario/Mac.h"

#include <QJsonDocument>

#include <utility>

namespace simulator::play {

namespace {

constexpr int patience = 60'000;

} // namespace

ClientProcess::ClientProcess(const QString& program) {
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(program, QStringList{});
    name_ = await("ready")["name"].toString();
}

ClientProcess::~ClientProcess() {
    process_.kill();
    process_.waitForFinished(patience);
}

void ClientProcess::submit(const QString& token, RequestKind kind, const QString& identifier) {
    const auto name = nameOf(kind);
    tell({{"do", "submit"},
          {"token", token},
          {"kind", QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()))},
          {"identifier", identifier}});
    await("taken");
}

void ClientProcess::answer(const QString& token, bool replace) {
    tell({{"do", "answer"}, {"token", token}, {"action", replace ? "replace" : "cancel"}});
    await("taken");
}

QList<QJsonObject> ClientProcess::hear() {
    tell({{"do", "hear"}});
    await("heard");
    return std::exchange(heard_, {});
}

void ClientProcess::quit() {
    process_.closeWriteChannel();
    awaitEnd();
}

void ClientProcess::awaitEnd() {
    const bool hasEnded = process_.state() == QProcess::NotRunning || process_.waitForFinished(patience);
    if (!hasEnded) throw scenario::NotDone{"an application does not end"};
}

void ClientProcess::tell(const QJsonObject& order) {
    process_.write(QJsonDocument{order}.toJson(QJsonDocument::Compact) + '\n');
}

QJsonObject ClientProcess::await(const QString& said) {
    while (true) {
        QJsonObject line = readLine();
        if (line["said"] == said) return line;
        if (line["said"] == "refused") throw scenario::NotDone{line["message"].toString().toStdString()};
        heard_.push_back(std::move(line));
    }
}

QJsonObject ClientProcess::readLine() {
    while (!process_.canReadLine()) {
        if (process_.waitForReadyRead(patience)) continue;
        throw scenario::NotDone{"an application ended, or says nothing: " + process_.errorString().toStdString()};
    }
    return QJsonDocument::fromJson(process_.readLine()).object();
}

} // namespace simulator::play
