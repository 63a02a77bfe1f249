#include "simulator/client/OwnerRaces.h"

#include <cstdio>

namespace simulator {

namespace {

void print(const QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (isNoteOfOwnerRace(message)) return;
    std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
}

} // namespace

bool isNoteOfOwnerRace(const QString& message) {
    return message.startsWith(QLatin1String{"QDBusConnection: name '"}) &&
           message.contains(QLatin1String{"' but we thought it was '"});
}

void keepOwnerRacesQuiet() {
    qInstallMessageHandler(print);
}

} // namespace simulator
