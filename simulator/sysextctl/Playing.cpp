#include "simulator/sysextctl/Playing.h"

#include "simulator/player/BusMac.h"
#include "simulator/player/CoreMac.h"
#include "simulator/player/Scenario.h"
#include "simulator/sysextctl/Output.h"

#include <QCoreApplication>
#include <QFile>

#include <memory>

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
TIME is a number with ms, s, m, h or d; seconds if there is none. LACK is identifier, usage-description or seal.
CATEGORY is cmio, endpoint_security, network_extension or unknown; a .systemextension alone has one. KIND is activate,
deactivate, properties or any. STATE is validating, staging, activated waiting for user, activated enabled, activated
disabled, terminating for upgrade via delegate, terminating for uninstall or terminated waiting to uninstall on reboot;
"list" prints it. "sysextctl switch --help" tells of the switches, and "sysextctl fault --help" of what goes wrong.

Example, more of which are in simulator/scenarios:
  # The user denies the camera in System Settings.
  activate com.kelvra.ip-camera.cmio
  expect needs approval
  deny com.kelvra.ip-camera.cmio
  expect failed 11
  expect copies com.kelvra.ip-camera.cmio none
)";

std::unique_ptr<player::Mac> newMac(bool isOnBus) {
    if (isOnBus) return std::make_unique<player::BusMac>(QCoreApplication::applicationDirPath());
    return std::make_unique<player::CoreMac>();
}

CommandFailure failureOf(const player::Mismatch& mismatch, const QString& file) {
    const auto where = QStringLiteral("%1:%2: ").arg(file).arg(mismatch.line);
    return {exitCode::notDone, where + QString::fromStdString(mismatch.text)};
}

void playFile(const QString& file, bool isOnBus) {
    try {
        const auto scenario = player::readScenarioFile(QFile::encodeName(file).toStdString());
        const auto mismatch = player::play(scenario, *newMac(isOnBus));
        if (mismatch) throw failureOf(*mismatch, file);
        say(oneLine(QStringLiteral("%1: %2 steps, all as expected").arg(file).arg(scenario.size())) + u'\n');
    } catch (const player::ScenarioError& error) {
        throw CommandFailure{exitCode::notUnderstood, QString::fromUtf8(error.what())};
    } catch (const player::NotDone& problem) {
        throw CommandFailure{exitCode::notDone, QString::fromUtf8(problem.what())};
    }
}

std::string detailsOfPlay() {
    return beforeTheGrammar + player::grammar() + behindTheGrammar;
}

Run play(Words& words) {
    const bool isOnBus = words.takeFlag("--bus");
    words.expect(1, 1);
    return [file = words.take("a file"), isOnBus] { playFile(QString::fromStdString(file), isOnBus); };
}

} // namespace

Command commandThatPlays() {
    return {"All of it, from a file", "play", "FILE [--bus]", "plays a scenario on a Mac of its own, or on the service",
            detailsOfPlay(),          play};
}

} // namespace simulator::ctl
