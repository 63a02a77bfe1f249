#include "tests/simulator/support/Printing.h"

#include "SimulatedMac.h"

#include "tests/simulator/application/SampleBundle.h"
#include "tests/simulator/support/TestApplication.h"

namespace simulator::tests {

namespace {

constexpr auto header = "enabled\tactive\tteamID\tbundleID (version)\tname\t[state]\n";

std::string cameraRow(const std::string& stars, const std::string& version, const std::string& state) {
    return stars + "\tKELVRA0001\tcom.kelvra.ip-camera.cmio (" + version + ")\tCamera\t[" + state + "]\n";
}

std::string cameraList(const std::string& row) {
    return "1 extension(s)\n--- com.apple.system_extension.cmio\n" + std::string{header} + row;
}

class TheCommandLineOnASimulatedMac : public testing::Test {
protected:
    std::string list() { return mac.sysextctl("list").output; }

private:
    TestApplication application_;

protected:
    SimulatedMac mac;
};

} // namespace

TEST_F(TheCommandLineOnASimulatedMac, ListsNothingAtFirst) {
    EXPECT_EQ(mac.sysextctl("list"), (Outcome{0, "0 extension(s)\n", ""}));
    EXPECT_EQ(mac.sysextctl("list --json"), (Outcome{0, "[]\n", ""}));
    EXPECT_EQ(mac.sysextctl("requests"), (Outcome{0, "0 request(s)\n", ""}));
}

TEST_F(TheCommandLineOnASimulatedMac, InstallsCopiesInEachState) {
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.0 2004"), silence);
    EXPECT_EQ(list(), cameraList(cameraRow("*\t*", "2.0/2004", "activated enabled")));
    EXPECT_EQ(mac.sysextctl("reset"), silence);
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.0 2004 waiting"), silence);
    EXPECT_EQ(list(), cameraList(cameraRow("\t*", "2.0/2004", "activated waiting for user")));
    EXPECT_EQ(mac.sysextctl("reset"), silence);
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.0 2004 disabled"), silence);
    EXPECT_EQ(list(), cameraList(cameraRow("\t", "2.0/2004", "activated disabled")));
    EXPECT_EQ(mac.sysextctl("reset"), silence);
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.0 2004 uninstalling"), silence);
    EXPECT_EQ(list(), cameraList(cameraRow("\t", "2.0/2004", "terminated waiting to uninstall on reboot")));
}

TEST_F(TheCommandLineOnASimulatedMac, ListsSeveralCopiesOldestFirstAndCategoriesInOrder) {
    EXPECT_EQ(mac.sysextctl("install com.kelvra.driverkit.usb-to-poe 2.1 2105"), silence);
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.0 2004 uninstalling"), silence);
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.1 2105"), silence);
    EXPECT_EQ(list(), "3 extension(s)\n--- com.apple.system_extension.cmio\n" + std::string{header} +
                          cameraRow("\t", "2.0/2004", "terminated waiting to uninstall on reboot") +
                          cameraRow("*\t*", "2.1/2105", "activated enabled") +
                          "--- com.apple.system_extension.driver_extension\n" + header +
                          "*\t*\tKELVRA0001\tcom.kelvra.driverkit.usb-to-poe (2.1/2105)\tNetwork\t"
                          "[activated enabled]\n");
    EXPECT_EQ(mac.sysextctl("list network_extension"), (Outcome{0, "0 extension(s)\n", ""}));
}

TEST_F(TheCommandLineOnASimulatedMac, AllowsWhatWaitsOnce) {
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.1 2105 waiting"), silence);
    EXPECT_EQ(mac.sysextctl("allow com.kelvra.ip-camera.cmio"), silence);
    EXPECT_EQ(list(), cameraList(cameraRow("*\t*", "2.1/2105", "activated enabled")));
    EXPECT_EQ(mac.sysextctl("allow com.kelvra.ip-camera.cmio"),
              (Outcome{1, "", "sysextctl: com.kelvra.ip-camera.cmio: nothing waits for approval\n"}));
}

TEST_F(TheCommandLineOnASimulatedMac, DeniesWhatWaitsOnce) {
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.1 2105 waiting"), silence);
    EXPECT_EQ(mac.sysextctl("deny com.kelvra.ip-camera.cmio"), silence);
    EXPECT_EQ(mac.sysextctl("wait com.kelvra.ip-camera.cmio waiting --timeout 0").code, 1);
    EXPECT_EQ(mac.sysextctl("deny com.kelvra.ip-camera.cmio"),
              (Outcome{1, "", "sysextctl: com.kelvra.ip-camera.cmio: nothing waits for approval\n"}));
}

TEST_F(TheCommandLineOnASimulatedMac, SwitchesAnExtensionOffAndOn) {
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.1 2105"), silence);
    EXPECT_EQ(mac.sysextctl("disable com.kelvra.ip-camera.cmio"), silence);
    EXPECT_EQ(list(), cameraList(cameraRow("\t", "2.1/2105", "activated disabled")));
    EXPECT_EQ(mac.sysextctl("enable com.kelvra.ip-camera.cmio"), silence);
    EXPECT_EQ(list(), cameraList(cameraRow("*\t*", "2.1/2105", "activated enabled")));
}

TEST_F(TheCommandLineOnASimulatedMac, RestartTakesAwayWhatIsUninstallingAndKeepsWhatWaits) {
    EXPECT_EQ(mac.sysextctl("install com.kelvra.driverkit.usb-to-poe 2.0 2004 uninstalling"), silence);
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.1 2105 waiting"), silence);
    EXPECT_EQ(mac.sysextctl("restart"), silence);
    EXPECT_EQ(list(), cameraList(cameraRow("\t*", "2.1/2105", "activated waiting for user")));
}

TEST_F(TheCommandLineOnASimulatedMac, ResetTakesAwayEveryCopy) {
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.1 2105"), silence);
    EXPECT_EQ(mac.sysextctl("reset"), silence);
    EXPECT_EQ(list(), "0 extension(s)\n");
}

TEST_F(TheCommandLineOnASimulatedMac, UninstallsForItsTeamOrForAny) {
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.1 2105"), silence);
    EXPECT_EQ(mac.sysextctl("uninstall OTHER com.kelvra.ip-camera.cmio").code, 1);
    EXPECT_EQ(mac.sysextctl("uninstall KELVRA0001 com.kelvra.ip-camera.cmio"), silence);
    EXPECT_EQ(mac.sysextctl("wait com.kelvra.ip-camera.cmio uninstalling"), silence);
    EXPECT_EQ(mac.sysextctl("install com.kelvra.driverkit.usb-to-poe 2.1 2105"), silence);
    EXPECT_EQ(mac.sysextctl("uninstall - com.kelvra.driverkit.usb-to-poe"), silence);
}

TEST_F(TheCommandLineOnASimulatedMac, KnowsTheExtensionsOfTheApplicationsAndNoOthers) {
    const Outcome unknown{2, "", "sysextctl: com.kelvra.unknown: no such extension\n"};
    EXPECT_EQ(mac.sysextctl("allow com.kelvra.unknown"), unknown);
    EXPECT_EQ(mac.sysextctl("deny com.kelvra.unknown"), unknown);
    EXPECT_EQ(mac.sysextctl("install com.kelvra.unknown 2.0 2004"), unknown);
    EXPECT_EQ(mac.sysextctl("wait com.kelvra.unknown absent").code, 2);
    EXPECT_EQ(mac.sysextctl("wait com.kelvra.ip-camera.cmio absent"), silence);
    EXPECT_EQ(mac.sysextctl("allow com.kelvra.ip-camera.cmio").code, 1);
}

TEST_F(TheCommandLineOnASimulatedMac, WaitsForEachState) {
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.0 2004 uninstalling"), silence);
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.1 2105 disabled"), silence);
    EXPECT_EQ(mac.sysextctl("wait com.kelvra.ip-camera.cmio uninstalling"), silence);
    EXPECT_EQ(mac.sysextctl("wait com.kelvra.ip-camera.cmio disabled"), silence);
    auto waiting = mac.started({"wait", camera, "enabled"});
    EXPECT_EQ(mac.sysextctl("enable com.kelvra.ip-camera.cmio"), silence);
    ASSERT_TRUE(waiting.ended());
    EXPECT_EQ(waiting.exitCode(), 0);
    EXPECT_EQ(mac.sysextctl("wait com.kelvra.ip-camera.cmio absent --timeout 0.05"),
              (Outcome{1, "", "sysextctl: com.kelvra.ip-camera.cmio is not absent after 0.050 s\n"}));
}

TEST_F(TheCommandLineOnASimulatedMac, FindsEverythingAsItWasAfterTheServiceDied) {
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.1 2105 waiting"), silence);
    mac.killService();
    EXPECT_EQ(list(), cameraList(cameraRow("\t*", "2.1/2105", "activated waiting for user")));
}

TEST_F(TheCommandLineOnASimulatedMac, WaitsOnThroughTheDeathOfTheService) {
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.1 2105 waiting"), silence);
    auto watching = mac.started({"watch"});
    ASSERT_TRUE(watching.printed("watching\n"));
    auto waiting = mac.started({"wait", camera, "enabled"});
    mac.killService();
    ASSERT_TRUE(watching.printed("the service is gone\n"));
    EXPECT_EQ(mac.sysextctl("allow com.kelvra.ip-camera.cmio"), silence);
    ASSERT_TRUE(waiting.ended());
    EXPECT_EQ(waiting.exitCode(), 0);
    EXPECT_EQ(waiting.errors(), "");
}

TEST_F(TheCommandLineOnASimulatedMac, WatchesWhatHappens) {
    auto watching = mac.started({"watch"});
    ASSERT_TRUE(watching.printed("watching\n"));
    EXPECT_EQ(mac.sysextctl("restart"), silence);
    EXPECT_TRUE(watching.printed("0.000\t-\trestart\n"));
}

TEST_F(TheCommandLineOnASimulatedMac, ChangesAndShowsSettings) {
    EXPECT_EQ(mac.sysextctl("developer"), (Outcome{0, "Developer mode is off\n", ""}));
    EXPECT_EQ(mac.sysextctl("developer on"), silence);
    EXPECT_EQ(mac.sysextctl("developer"), (Outcome{0, "Developer mode is on\n", ""}));
    EXPECT_EQ(mac.sysextctl("advance 90s"), (Outcome{0, "90.000\n", ""}));
    EXPECT_EQ(mac.sysextctl("advance 250ms"), (Outcome{0, "90.250\n", ""}));
    EXPECT_EQ(mac.sysextctl("switch second fails"), silence);
    EXPECT_EQ(mac.sysextctl("switch second").output.rfind("second\tfails\t(supersedes | fails)\t", 0), 0U);
    EXPECT_EQ(mac.sysextctl("switch second maybe").code, 2);
    EXPECT_EQ(mac.sysextctl("profile"), (Outcome{0, "No profile\n", ""}));
    EXPECT_EQ(mac.sysextctl("fault next activate silent"), silence);
    EXPECT_EQ(mac.sysextctl("fault next properties hollow").code, 2);
}

} // namespace simulator::tests
