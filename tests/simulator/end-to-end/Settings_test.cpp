// System Settings in front of the service itself, with the command line and an application beside it.

#include "tests/simulator/SystemSettings/ShownWindow.h"
#include "tests/simulator/support/SimulatedMac.h"

#include <csignal>
#include <optional>

namespace simulator::tests {

namespace {

class SystemSettingsOnASimulatedMac : public testing::Test {
private:
    OffscreenApplication offscreen_;

protected:
    void openAfter(const QString& line) {
        EXPECT_EQ(mac.does(line), "");
        shown.emplace(mac.connect());
    }

    SimulatedMac mac;
    std::optional<ShownWindow> shown;
};

TEST_F(SystemSettingsOnASimulatedMac, DoesWhatIsPressed) {
    openAfter("install com.kelvra.ip-camera.cmio 2.1 2105 waiting");
    ASSERT_TRUE(shown->untilShown("Allow Camera"));
    shown->press("Allow Camera");
    EXPECT_TRUE(shown->untilSaid("Enabled"));
    shown->press("Enable Camera");
    EXPECT_TRUE(shown->untilSaid("Disabled"));
    shown->press("Enable Camera");
    EXPECT_TRUE(shown->untilSaid("Enabled"));
    EXPECT_EQ(mac.does("uninstall - com.kelvra.ip-camera.cmio"), "");
    ASSERT_TRUE(shown->untilSaid("Removed at restart"));
    shown->press("Restart");
    EXPECT_TRUE(shown->untilSaid("No camera extension is installed."));
    EXPECT_EQ(mac.does("install com.kelvra.ip-camera.cmio 2.1 2105 waiting"), "");
    ASSERT_TRUE(shown->untilShown("Deny Camera"));
    shown->press("Deny Camera");
    EXPECT_TRUE(shown->untilSaid("No camera extension is installed."));
}

TEST_F(SystemSettingsOnASimulatedMac, AnswersAnApplicationThatRemoves) {
    openAfter("install com.kelvra.driverkit.usb-to-poe 2.1 2105");
    const auto application = mac.application();
    application->submit("a", "deactivation", driver);
    ASSERT_TRUE(shown->untilShown("Refuse Network"));
    EXPECT_TRUE(shown->says("Driver Manager wants to remove Network."));
    EXPECT_EQ(mac.does({"refuse", driver}), "");
    EXPECT_TRUE(shown->untilShown("Enable Network"));
    application->submit("b", "deactivation", driver);
    ASSERT_TRUE(shown->untilShown("Authorize Network"));
    shown->press("Authorize Network");
    EXPECT_TRUE(application->hears("b finished 0"));
    EXPECT_TRUE(shown->untilSaid("Removed at restart"));
}

TEST_F(SystemSettingsOnASimulatedMac, LeavesAServiceThatDiedAloneUntilSomeoneCallsIt) {
    openAfter("install com.kelvra.ip-camera.cmio 2.1 2105 waiting");
    ASSERT_TRUE(shown->untilShown("Allow Camera"));
    mac.signalService(SIGKILL);
    ASSERT_TRUE(shown->untilSaid("The simulated Mac is not running."));
    shown->press("Start the simulated Mac");
    EXPECT_TRUE(shown->untilShown("Allow Camera"));
    mac.signalService(SIGKILL);
    ASSERT_TRUE(shown->untilSaid("The simulated Mac is not running."));
    EXPECT_EQ(mac.does("allow com.kelvra.ip-camera.cmio"), "");
    EXPECT_TRUE(shown->untilSaid("Enabled"));
}

} // namespace

} // namespace simulator::tests
