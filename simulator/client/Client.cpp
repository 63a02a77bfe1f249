#include "simulator/client/Client.h"

#include <cstdio>

namespace simulator {

namespace {

void print(const QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (isNoteOfOwnerRace(message)) return;
    std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
}

} // namespace

QDBusPendingReply<QByteArray> callToDo(ComKelvraSimulator1ControlInterface& control, const Saying& saying) {
    QStringList words;
    for (const Word& word : saying.words) {
        if (word.isQuoted && isOption(word.text)) words += "--";
        words += QString::fromStdString(word.text);
    }
    return control.Do(words, QByteArray::fromStdString(saying.contents));
}

bool cannotBeStarted(const QDBusError& error) {
    return error.name().startsWith("org.freedesktop.DBus.Error.Spawn.");
}

ServicePresence::ServicePresence(QDBusConnection bus)
    : bus_{std::move(bus)}, watcher_{serviceName, bus_, QDBusServiceWatcher::WatchForOwnerChange} {
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& now) { now.isEmpty() ? went() : came(); });
    bus_.connect({}, "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local", "Disconnected", this,
                 SIGNAL(busLost()));
}

bool isNoteOfOwnerRace(const QString& message) {
    return message.startsWith(QLatin1String{"QDBusConnection: name '"}) &&
           message.contains(QLatin1String{"' but we thought it was '"});
}

void keepOwnerRacesQuiet() {
    qInstallMessageHandler(print);
}

} // namespace simulator
