#include "SimulatedMac.h"

#include "Simulator1Proxy.h"
#include "simulator/bus/Names.h"
#include "simulator/bus/Types.h"
#include "tests/simulator/application/SampleBundle.h"

#include <QDBusConnectionInterface>

#include <csignal>
#include <stdexcept>

namespace simulator::tests {

void PrintTo(const Outcome& outcome, std::ostream* stream) {
    *stream << outcome.code << ", output <" << outcome.output << ">, errors <" << outcome.errors << '>';
}

SimulatedMac::SimulatedMac()
    : program_{makeSampleBundle(folder_.filePath("Applications/Driver Manager.app"), ASKER)},
      bus_{serviceEnvironment()} {
    registerTypes();
    bus_.makeActivatable(serviceName, SYSEXTD);
    setApplicationsFolder();
}

Program SimulatedMac::started(const QStringList& arguments) const {
    return {SYSEXTCTL, arguments, bus_.environment()};
}

Outcome SimulatedMac::sysextctl(const QStringList& arguments) const {
    auto program = started(arguments);
    if (!program.ended()) throw std::runtime_error{"sysextctl does not end"};
    return {program.exitCode(), program.output().toStdString(), program.errors().toStdString()};
}

void SimulatedMac::killService() {
    const auto bus = bus_.connect();
    const auto process = bus.interface()->servicePid(serviceName);
    if (!process.isValid()) throw std::runtime_error{process.error().message().toStdString()};
    EXPECT_TRUE(sendSignal(process.value(), SIGKILL));
}

QProcessEnvironment SimulatedMac::serviceEnvironment() const {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_STATE_HOME", folder_.filePath("state"));
    return environment;
}

void SimulatedMac::setApplicationsFolder() {
    ComKelvraSimulator1ControlInterface control{serviceName, objectPath, bus_.connect()};
    auto answer = control.SetApplicationsFolders({folder_.filePath("Applications")});
    answer.waitForFinished();
    if (answer.isError()) throw std::runtime_error{answer.error().message().toStdString()};
}

} // namespace simulator::tests
