#include "simulator/bus/Types.h"
#include "simulator/client/OwnerRaces.h"
#include "simulator/process/TerminationSignals.h"
#include "simulator/sysextctl/CommandFailure.h"
#include "simulator/sysextctl/CommandLine.h"
#include "simulator/sysextctl/Execution.h"

#include <QCoreApplication>

#include <cstdio>
#include <optional>

namespace {

using namespace simulator;

bool needsNoBus(const ctl::Command& command) {
    const auto* const play = std::get_if<ctl::Play>(&command);
    return std::holds_alternative<ctl::ShowHelp>(command) || (play != nullptr && !play->onBus);
}

/// It puts the Mac's settings back before it ends.
bool endsInOrder(const ctl::Command& command) {
    const auto* const play = std::get_if<ctl::Play>(&command);
    return play != nullptr && play->onBus;
}

QStringList wordsOf(int argc, char** argv) {
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words += QString::fromLocal8Bit(argv[i]);
    return words;
}

int carryOut(const ctl::Command& command) {
    const auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() && !needsNoBus(command))
        throw ctl::CommandFailure{ctl::exitCode::notDone, "there is no session bus"};
    ctl::Execution{bus}.carryOut(command);
    return ctl::exitCode::done;
}

} // namespace

int main(int argc, char** argv) {
    simulator::keepOwnerRacesQuiet();
    try {
        const auto command = ctl::readCommandLine(wordsOf(argc, argv));
        std::optional<TerminationSignals> termination;
        if (endsInOrder(command)) termination.emplace();
        const QCoreApplication application{argc, argv};
        registerTypes();
        return carryOut(command);
    } catch (const ctl::CommandFailure& failure) {
        std::fprintf(stderr, "sysextctl: %s\n", failure.what());
        return failure.code();
    }
}
