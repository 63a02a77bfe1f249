// The command line in front of the service itself.

#include "tests/simulator/support/SimulatedMac.h"

#include <csignal>

namespace simulator::tests {

namespace {

class SysextctlOnASimulatedMac : public OnASimulatedMac {
protected:
    Outcome said(const QString& line) { return mac.sysextctl(line); }
};

struct Line {
    const char* words;
    Outcome outcome;
};

Outcome says(const std::string& text) {
    return {0, text, ""};
}

std::string row(const std::string& stars, const std::string& version, const std::string& state) {
    return stars + "\tKELVRA0001\tcom.kelvra.ip-camera.cmio (" + version + ")\tCamera\t[" + state + "]\n";
}

const std::string head = "enabled\tactive\tteamID\tbundleID (version)\tname\t[state]\n";
const std::string listOfThree =
    "3 extension(s)\n--- com.apple.system_extension.cmio\n" + head +
    row("\t", "2.0/2004", "terminated waiting to uninstall on reboot") + row("*\t*", "2.1/2105", "activated enabled") +
    "--- com.apple.system_extension.driver_extension\n" + head +
    "\t*\tKELVRA0001\tcom.kelvra.driverkit.usb-to-poe (2.1/2105)\tNetwork\t[activated waiting for user]\n";

/// One after the other, on one Mac.
const Line conversation[]{
    {"list", says("0 extension(s)\n")},
    {"install com.kelvra.driverkit.usb-to-poe 2.1 2105 waiting", silence},
    {"install com.kelvra.ip-camera.cmio 2.0 2004 uninstalling", silence},
    {"install com.kelvra.ip-camera.cmio 2.1 2105", silence},
    {"list", says(listOfThree)},
    {"list network_extension", says("0 extension(s)\n")},
    {"list network_extension --json", says("[]\n")},
    {"requests --json", says("[]\n")},
    {"wait com.kelvra.ip-camera.cmio uninstalling", silence},
    {"wait com.kelvra.ip-camera.cmio absent --timeout 0.05",
     failed(1, "com.kelvra.ip-camera.cmio is not absent after 0.050 s")},
    {"deny com.kelvra.driverkit.usb-to-poe", silence},
    {"deny com.kelvra.driverkit.usb-to-poe",
     failed(1, "com.kelvra.driverkit.usb-to-poe: no copy is waiting for approval")},
    {"wait com.kelvra.unknown absent", failed(2, "\"com.kelvra.unknown\": no such extension")},
    {"reset", silence},
    {"wait com.kelvra.ip-camera.cmio absent", silence},
};

TEST_F(SysextctlOnASimulatedMac, SaysWhatItSays) {
    for (const Line& line : conversation)
        EXPECT_EQ(said(line.words), line.outcome) << line.words;
}

TEST_F(SysextctlOnASimulatedMac, BringsAndShowsAProfile) {
    const QByteArray profile = "<plist version=\"1.0\"><dict><key>AllowUserOverrides</key><true/></dict></plist>";
    const auto file = written(profile);
    EXPECT_EQ(mac.sysextctl({"profile", file->fileName()}), silence);
    EXPECT_EQ(said("profile"), says(profile.toStdString()));
}

TEST_F(SysextctlOnASimulatedMac, WaitsAndWatchesThroughTheDeathOfTheService) {
    EXPECT_EQ(said("install com.kelvra.ip-camera.cmio 2.1 2105 waiting"), silence);
    auto watching = mac.started({"watch"});
    ASSERT_TRUE(watching.printed("watching\t-\n"));
    auto waiting = mac.started({"wait", camera, "enabled"});
    mac.signalService(SIGKILL);
    ASSERT_TRUE(watching.printed("the service stopped\t-\n"));
    EXPECT_EQ(said("allow com.kelvra.ip-camera.cmio"), silence);
    EXPECT_EQ(waiting.outcome(), silence);
    EXPECT_TRUE(watching.printed("0.000\tcom.kelvra.ip-camera.cmio\t2.1/2105: activated waiting for user -> "
                                 "activated enabled\t-\n"));
}

} // namespace

} // namespace simulator::tests
