#include "simulator/bus/Types.h"
#include "simulator/client/OwnerRaces.h"
#include "simulator/sysextctl/CommandFailure.h"
#include "simulator/sysextctl/CommandLine.h"
#include "simulator/sysextctl/Execution.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

using namespace simulator;

bool needsNoBus(const ctl::Command& command) {
    const auto* const play = std::get_if<ctl::Play>(&command);
    return std::holds_alternative<ctl::ShowHelp>(command) || (play != nullptr && !play->onBus);
}

int carryOut(const QStringList& words) {
    const auto command = ctl::readCommandLine(words);
    const auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() && !needsNoBus(command))
        throw ctl::CommandFailure{ctl::exitCode::notDone, "there is no session bus"};
    ctl::Execution{bus}.carryOut(command);
    return ctl::exitCode::done;
}

} // namespace

int main(int argc, char** argv) {
    simulator::keepOwnerRacesQuiet();
    const QCoreApplication application{argc, argv};
    simulator::registerTypes();
    try {
        return carryOut(QCoreApplication::arguments().mid(1));
    } catch (const ctl::CommandFailure& failure) {
        std::fprintf(stderr, "sysextctl: %s\n", failure.what());
        return failure.code();
    }
}
