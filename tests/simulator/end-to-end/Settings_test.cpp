// System Settings in front of the service itself.

#include "tests/simulator/SystemSettings/ShownWindow.h"
#include "tests/simulator/support/SimulatedMac.h"

#include <csignal>

namespace simulator::tests {

namespace {

TEST(SystemSettingsOnASimulatedMac, LeavesAServiceThatDiedAloneUntilSomeoneCallsIt) {
    const OffscreenApplication offscreen;
    SimulatedMac mac;
    EXPECT_EQ(mac.does("install com.kelvra.ip-camera.cmio 2.1 2105 waiting"), "");
    ShownWindow shown{mac.connect()};
    ASSERT_TRUE(shown.untilShown("Allow Camera"));
    mac.signalService(SIGKILL);
    ASSERT_TRUE(shown.untilSaid("The simulated Mac is not running."));
    shown.press("Start the simulated Mac");
    EXPECT_TRUE(shown.untilShown("Allow Camera"));
    mac.signalService(SIGKILL);
    ASSERT_TRUE(shown.untilSaid("The simulated Mac is not running."));
    EXPECT_EQ(mac.does("allow com.kelvra.ip-camera.cmio"), "");
    EXPECT_TRUE(shown.untilSaid("Enabled"));
}

} // namespace

} // namespace simulator::tests
