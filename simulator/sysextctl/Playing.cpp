#include "simulator/sysextctl/Playing.h"

#include "Simulator1Proxy.h"
#include "simulator/bus/Names.h"
#include "simulator/disk/ProfileReader.h"
#include "simulator/play/BusMac.h"
#include "simulator/process/TerminationSignals.h"
#include "simulator/scenario/CoreMac.h"
#include "simulator/scenario/Play.h"
#include "simulator/scenario/ScenarioError.h"
#include "simulator/sysextctl/CommandFailure.h"
#include "simulator/sysextctl/OneLine.h"
#include "simulator/sysextctl/ServiceError.h"

#include <QCoreApplication>
#include <QFile>

namespace simulator::ctl {

namespace {

scenario::Scenario scenarioIn(const QString& file) {
    try {
        return scenario::readScenarioFile(QFile::encodeName(file).toStdString());
    } catch (const scenario::ScenarioError& error) {
        throw CommandFailure{exitCode::notUnderstood, oneLine(QString::fromUtf8(error.what()))};
    }
}

std::optional<scenario::Mismatch> playOnBus(const scenario::Scenario& scenario, const QDBusConnection& bus) {
    ComKelvraSimulator1ControlInterface control{serviceName, objectPath, bus};
    answered(control.ListIdentifiers()); // whether it is there at all
    try {
        play::BusMac mac{bus, QCoreApplication::applicationDirPath() + "/submit", &TerminationSignals::areWaiting};
        return scenario::play(scenario, mac);
    } catch (const scenario::NotDone& problem) {
        throw CommandFailure{exitCode::notDone, oneLine(QString::fromUtf8(problem.what()))};
    }
}

std::optional<scenario::Mismatch> playInProcess(const scenario::Scenario& scenario) {
    scenario::CoreMac mac{readProfile};
    return scenario::play(scenario, mac);
}

} // namespace

QString play(const Play& command, const QDBusConnection& bus) {
    const auto scenario = scenarioIn(command.file);
    const auto mismatch = command.onBus ? playOnBus(scenario, bus) : playInProcess(scenario);
    if (mismatch) {
        const auto where = QStringLiteral("%1:%2: ").arg(command.file).arg(mismatch->line);
        throw CommandFailure{exitCode::notDone, oneLine(where + QString::fromStdString(mismatch->text))};
    }
    return oneLine(QStringLiteral("%1: %2 steps, all as expected").arg(command.file).arg(scenario.steps.size())) +
           u'\n';
}

} // namespace simulator::ctl
