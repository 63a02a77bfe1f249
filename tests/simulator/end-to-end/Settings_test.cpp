#include "tests/simulator/support/Printing.h"

#include "SimulatedMac.h"

#include "tests/simulator/SystemSettings/ShownWindow.h"
#include "tests/simulator/support/QtMessages.h"

#include <optional>

namespace simulator::tests {

namespace {

class SystemSettingsOnASimulatedMac : public testing::Test {
protected:
    void open() { shown.emplace(mac.connect()); }

private:
    OffscreenApplication application_;
    QtMessages messages_;

protected:
    SimulatedMac mac;
    std::optional<ShownWindow> shown;
};

} // namespace

TEST_F(SystemSettingsOnASimulatedMac, AllowsWhatWaits) {
    ASSERT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.1 2105 waiting"), silence);
    open();
    ASSERT_TRUE(shown->untilShown("Allow Camera"));
    EXPECT_TRUE(shown->says("Waiting for approval"));
    shown->press("Allow Camera");
    EXPECT_TRUE(shown->untilSaid("Enabled"));
    EXPECT_EQ(mac.sysextctl("wait com.kelvra.ip-camera.cmio enabled"), silence);
}

TEST_F(SystemSettingsOnASimulatedMac, DeniesWhatWaits) {
    ASSERT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.1 2105 waiting"), silence);
    open();
    ASSERT_TRUE(shown->untilShown("Deny Camera"));
    shown->press("Deny Camera");
    EXPECT_TRUE(shown->untilSaid("No camera extension is installed."));
    EXPECT_EQ(mac.sysextctl("wait com.kelvra.ip-camera.cmio waiting --timeout 0").code, 1);
}

TEST_F(SystemSettingsOnASimulatedMac, SwitchesOffAndOn) {
    ASSERT_EQ(mac.sysextctl("install com.kelvra.driverkit.usb-to-poe 2.1 2105"), silence);
    open();
    ASSERT_TRUE(shown->untilShown("Enable Network"));
    shown->press("Enable Network");
    EXPECT_TRUE(shown->untilSaid("Disabled"));
    shown->press("Enable Network");
    EXPECT_TRUE(shown->untilSaid("Enabled"));
}

TEST_F(SystemSettingsOnASimulatedMac, Restarts) {
    ASSERT_EQ(mac.sysextctl("install com.kelvra.driverkit.usb-to-poe 2.1 2105 uninstalling"), silence);
    open();
    ASSERT_TRUE(shown->untilSaid("Removed at restart"));
    shown->press("Restart");
    EXPECT_TRUE(shown->untilSaid("No driver is installed."));
}

TEST_F(SystemSettingsOnASimulatedMac, StartsTheServiceAndFollowsTheCommandLine) {
    open();
    ASSERT_TRUE(shown->untilSaid("No camera extension is installed."));
    EXPECT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.1 2105 waiting"), silence);
    EXPECT_TRUE(shown->untilShown("Allow Camera"));
    EXPECT_EQ(mac.sysextctl("reset"), silence);
    EXPECT_TRUE(shown->untilSaid("No camera extension is installed."));
}

TEST_F(SystemSettingsOnASimulatedMac, LeavesAServiceThatDiedAloneUntilSomeoneCallsIt) {
    ASSERT_EQ(mac.sysextctl("install com.kelvra.ip-camera.cmio 2.1 2105 waiting"), silence);
    open();
    ASSERT_TRUE(shown->untilShown("Allow Camera"));
    mac.killService();
    ASSERT_TRUE(shown->untilSaid("The simulated Mac is not running."));
    shown->press("Start the simulated Mac");
    EXPECT_TRUE(shown->untilShown("Allow Camera"));
    mac.killService();
    ASSERT_TRUE(shown->untilSaid("The simulated Mac is not running."));
    EXPECT_EQ(mac.sysextctl("allow com.kelvra.ip-camera.cmio"), silence);
    EXPECT_TRUE(shown->untilSaid("Enabled"));
}

} // namespace simulator::tests
