#include "simulator/sysextctl/Playing.h"

#include "simulator/player/BusMac.h"
#include "simulator/player/CoreMac.h"
#include "simulator/player/Scenario.h"
#include "simulator/sysextctl/Ending.h"

#include <QCoreApplication>
#include <QFile>

namespace simulator::ctl {

namespace {

constexpr auto beforeTheGrammar =
    R"(With --bus it is played on a service of its own, with applications as real processes; otherwise in this process. Neither
touches the Mac that the other verbs are about. It begins with nothing installed and every setting at its default.

Each line is one of these; # begins a comment, and a word that holds a blank stands in "quotes". NAME is an
application. Where none is named it is "Driver Manager", which lies in /Applications and carries the drivers
com.kelvra.driverkit.base and com.kelvra.driverkit.usb-to-poe and the camera com.kelvra.ip-camera.cmio, each 2.1/2105.
REQUEST is what "called" called a request, or else its ID. The FILE of "profile" lies beside the scenario; any other
FILE is an extension in its application, such as com.kelvra.driverkit.base.dext. PATH is one on the simulated disk.
The first line that does not go as it says ends the scenario; so does an answer that no line expects.

)";

constexpr auto behindTheGrammar = R"(
"sysextctl VERB --help" says more about the verbs from "allow" to "fault", which are those of the command line. TIME is
a number with ms, s, m, h or d; seconds if there is none. LACK is identifier, usage-description or seal. CATEGORY is
cmio, endpoint_security, network_extension or unknown; a .systemextension alone has one. The STATE that is expected is
validating, staging, activated waiting for user, activated enabled, activated disabled, terminating for upgrade via
delegate, terminating for uninstall or terminated waiting to uninstall on reboot; "list" prints it.

Example, more of which are in simulator/scenarios:
  # The user denies the camera in System Settings.
  activate com.kelvra.ip-camera.cmio
  expect needs approval
  deny com.kelvra.ip-camera.cmio
  expect failed 11
  expect copies com.kelvra.ip-camera.cmio none
)";

player::Scenario scenarioIn(const QString& file) {
    try {
        return player::readScenarioFile(QFile::encodeName(file).toStdString());
    } catch (const player::ScenarioError& error) {
        throw CommandFailure{exitCode::notUnderstood, QString::fromUtf8(error.what())};
    }
}

std::optional<player::Mismatch> playOnBus(const player::Scenario& scenario) {
    try {
        player::BusMac mac{QCoreApplication::applicationDirPath()};
        return player::play(scenario, mac);
    } catch (const player::NotDone& problem) {
        throw CommandFailure{exitCode::notDone, QString::fromUtf8(problem.what())};
    }
}

std::optional<player::Mismatch> playInProcess(const player::Scenario& scenario) {
    player::CoreMac mac;
    return player::play(scenario, mac);
}

} // namespace

void playFile(const QString& file, bool isOnBus) {
    const auto scenario = scenarioIn(file);
    const auto mismatch = isOnBus ? playOnBus(scenario) : playInProcess(scenario);
    if (mismatch) {
        const auto where = QStringLiteral("%1:%2: ").arg(file).arg(mismatch->line);
        throw CommandFailure{exitCode::notDone, where + QString::fromStdString(mismatch->text)};
    }
    say(oneLine(QStringLiteral("%1: %2 steps, all as expected").arg(file).arg(scenario.size())) + u'\n');
}

std::string detailsOfPlay() {
    return beforeTheGrammar + player::grammar() + behindTheGrammar;
}

} // namespace simulator::ctl
