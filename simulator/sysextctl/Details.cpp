#include "simulator/sysextctl/Details.h"

#include "simulator/core/Switch.h"
#include "simulator/scenario/Scenario.h"

namespace simulator::ctl::details {

namespace {

QString text(std::string_view view) {
    return QString::fromUtf8(view.data(), static_cast<qsizetype>(view.size()));
}

constexpr auto beforeTheGrammar =
    R"(With --bus the service plays the Mac, and what was installed on it before is lost; otherwise this process does, and
touches nothing. In both cases the Mac begins with nothing installed and every setting at its default.

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

} // namespace

const char* const requests =
    R"(One line a request, its columns separated by tabs: its number; activation, deactivation or properties; the
extension; the reading of the simulated clock, in seconds, when it was asked; the application's bundle; and its stage:
  delayed        a fault holds it back until the clock is advanced
  checking       whether it may be asked at all
  validating     the extension's files are looked at
  replacement    the application is asked whether the new copy may replace the old one
  staging        the new copy is being prepared
  user           waits for "allow" or "deny"
  authorization  waits for "authorize" or "refuse"
  removing       the copies are being taken away
  silent         will never be answered
With --json it prints an array of objects with number, kind, identifier, since (in milliseconds), application, stage,
and client and token, which are how the application is called on the bus and how it calls the request.
)";

const char* const watch =
    R"(One line an event, its columns separated by tabs: the reading of the simulated clock in seconds; the extension, or
- for what concerns none; and what happened. Of a request it says that it was submitted and what the answer was,
of a copy its version and its new state: "2.1/2105: activated waiting for user -> activated enabled".
)";

const char* const allow =
    R"(The copy of ID that waits is enabled, and the approval is on record for later versions. The application whose request
waits for this is told that it finished, 0, or 1 if a restart completes it.
)";

const char* const deny =
    R"(The copy of ID that waits goes away. The application whose request waits for this is told that it failed with 11,
cancelled; with "sysextctl switch denial silence" it is told nothing, ever.
)";

const char* const authorize =
    R"(A removal asks for an administrator. With yes every copy of ID is taken away, and so is its approval; the application
is told that its request finished, 0, or 1 if a restart completes it. "sysextctl switch authorization granted" says yes
to every removal.
)";

const char* const refuse =
    R"(Nothing is removed, and the application is told that its request failed with 13, authorisation required; with
"sysextctl switch refusal 11" it is told 11, cancelled.
)";

const char* const disable =
    R"(As the switch in System Settings does. The copy of ID is then "activated disabled": neither enabled nor waiting. No
application is told; it learns of it when it asks for the properties.
)";

const char* const enable =
    R"(The copy of ID that was switched off is enabled without another approval. No application is told; it learns of it when
it asks for the properties.
)";

const char* const restart =
    R"(Copies that were uninstalling are gone, those that wait for approval go on waiting, and requests that were open are
never answered. "./run" starts the application again.
)";

const char* const reset =
    R"(An open request fails with 11, cancelled. The Applications folders, developer mode, the profile, the clock and the
switches stay as they are.
)";

const char* const uninstall =
    R"(TEAM is the ten characters that "list" shows. No application is told, no administrator is asked, and the approval is
forgotten; the copies go with the next restart.
Example: sysextctl uninstall KELVRA0001 com.kelvra.ip-camera.cmio
)";

const char* const developer =
    R"(In developer mode an application may lie outside the Applications folders, and an activation of the version that is
enabled already asks the replacement question all the same.
)";

const char* const profile = R"(FILE is a property list, or a .mobileconfig that holds one, with any of the keys
  AllowedSystemExtensions    identifiers by team, which are activated without approval
  AllowedTeamIdentifiers     teams of which each extension is
  AllowUserOverrides         if false, an activation of what is not allowed so fails with 10
  RemovableSystemExtensions  identifiers by team, which are removed without an administrator
A profile that arrives answers what waits. Where it forbids an extension, "allow", "enable" and "install" do not enable
it, and say so. --remove takes the profile away; without an argument it is printed.
Example: sysextctl profile simulator/scenarios/allow-team.mobileconfig
)";

QString ofSwitch() {
    auto lines = QStringLiteral(
        "Without VALUE it shows the switch, without NAME every switch; the first value is the default.\n");
    for (const SwitchRow& row : switches) {
        const auto values = text(row.byDefault) + " | " + text(row.otherwise);
        lines += "  " + text(row.name).leftJustified(15) + values.leftJustified(20) + text(row.meaning) + '\n';
    }
    return lines + "Example: sysextctl switch denial silence\n";
}

QString ofPlay() {
    return QString{beforeTheGrammar} + QString::fromStdString(scenario::grammar()) + QString{behindTheGrammar};
}

} // namespace simulator::ctl::details
