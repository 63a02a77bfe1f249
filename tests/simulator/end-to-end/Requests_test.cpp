// An application asks, and the command line and System Settings play the person.

#include "tests/simulator/support/Printing.h"

#include "SimulatedMac.h"

#include "tests/simulator/SystemSettings/ShownWindow.h"
#include "tests/simulator/support/QtMessages.h"

#include <optional>

namespace simulator::tests {

namespace {

class AnApplicationOnASimulatedMac : public testing::Test {
private:
    OffscreenApplication offscreen_;
    QtMessages messages_;

protected:
    SimulatedMac mac;
    Asker application{mac.application()};
};

} // namespace

TEST_F(AnApplicationOnASimulatedMac, IsFinishedWhenTheCommandLineAllows) {
    application.tell("submit a activation com.kelvra.ip-camera.cmio");
    ASSERT_TRUE(application.hears("a needs approval"));
    EXPECT_EQ(mac.sysextctl("wait com.kelvra.ip-camera.cmio waiting"), silence);
    EXPECT_EQ(mac.sysextctl("allow com.kelvra.ip-camera.cmio"), silence);
    EXPECT_TRUE(application.hears("a finished 0"));
}

TEST_F(AnApplicationOnASimulatedMac, IsShownAmongTheRequestsUntilItIsAnswered) {
    application.tell("submit a activation com.kelvra.ip-camera.cmio");
    ASSERT_TRUE(application.hears("a needs approval"));
    const auto shown = mac.sysextctl("requests");
    EXPECT_EQ(shown.output.rfind("1 request(s)\n", 0), 0U);
    EXPECT_NE(shown.output.find("activation\tcom.kelvra.ip-camera.cmio\t0.000\t"), std::string::npos);
    EXPECT_NE(shown.output.find("/Applications/Driver Manager.app\t[user]\n"), std::string::npos);
    EXPECT_EQ(mac.sysextctl("deny com.kelvra.ip-camera.cmio"), silence);
    EXPECT_EQ(mac.sysextctl("requests"), (Outcome{0, "0 request(s)\n", ""}));
}

TEST_F(AnApplicationOnASimulatedMac, IsFinishedWhenSystemSettingsAllows) {
    ShownWindow settings{mac.connect()};
    application.tell("submit a activation com.kelvra.ip-camera.cmio");
    ASSERT_TRUE(settings.untilShown("Allow Camera"));
    settings.press("Allow Camera");
    EXPECT_TRUE(application.hears("a finished 0"));
}

TEST_F(AnApplicationOnASimulatedMac, HasItsRemovalAuthorizedInSystemSettings) {
    ASSERT_EQ(mac.sysextctl("install com.kelvra.driverkit.usb-to-poe 2.1 2105"), silence);
    ShownWindow settings{mac.connect()};
    application.tell("submit a deactivation com.kelvra.driverkit.usb-to-poe");
    ASSERT_TRUE(settings.untilShown("Authorize Network"));
    EXPECT_TRUE(settings.says("Driver Manager wants to remove Network."));
    settings.press("Authorize Network");
    EXPECT_TRUE(application.hears("a finished 0"));
    EXPECT_TRUE(settings.untilSaid("Removed at restart"));
    EXPECT_FALSE(settings.shows("Authorize Network"));
}

TEST_F(AnApplicationOnASimulatedMac, HasItsRemovalRefusedOnTheCommandLine) {
    ASSERT_EQ(mac.sysextctl("install com.kelvra.driverkit.usb-to-poe 2.1 2105"), silence);
    ShownWindow settings{mac.connect()};
    application.tell("submit a deactivation com.kelvra.driverkit.usb-to-poe");
    ASSERT_TRUE(settings.untilShown("Refuse Network"));
    EXPECT_EQ(mac.sysextctl("refuse com.kelvra.driverkit.usb-to-poe"), silence);
    EXPECT_TRUE(settings.untilShown("Enable Network"));
    EXPECT_EQ(mac.sysextctl("refuse com.kelvra.driverkit.usb-to-poe").code, 1);
}

TEST_F(AnApplicationOnASimulatedMac, MeetsTheFaultThatWasOrdered) {
    ASSERT_EQ(mac.sysextctl({"fault", "next", "activate", "8", "broken seal"}), silence);
    application.tell("submit a activation com.kelvra.ip-camera.cmio");
    EXPECT_TRUE(application.hears("a failed OSSystemExtensionErrorDomain 8 (broken seal)"));
}

} // namespace simulator::tests
