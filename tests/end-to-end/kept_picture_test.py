"""Where the running application rightly keeps an older picture, and what one that is started anew makes of it."""

import unittest

from application import AWAITING, NOT_INSTALLED, NOTHING_INSTALLED, ALL_SET
from case import MacTest
from mac import CAMERA, NETWORK

ENABLED = "2.1/2105 State: Enabled [true false false]"


class TheRunningApplication(MacTest):
    def setUp(self):
        super().setUp()
        self.mac.does("install", NETWORK, "2.1", "2105")

    def test_keeps_what_an_empty_answer_does_not_mention(self):
        self.mac.does("install", CAMERA, "2.1", "2105")
        application = self.open_application()
        application.wait_for_lines(2)
        self.mac.does("reset")
        self.mac.does("install", NETWORK, "2.1", "2105")
        application.choose("Refresh", "Network Driver")
        self.expect_output(application, f"{NETWORK} {ENABLED}")
        self.expect_look(application, ALL_SET, "Enabled", "Enabled")
        self.expect_new_look(NOTHING_INSTALLED, NOT_INSTALLED, "Enabled")

    def test_keeps_the_restart_that_it_was_told_of(self):
        self.mac.does("switch", "driver", "in-use")
        self.mac.does("switch", "authorization", "granted")
        self.mac.does("install", CAMERA, "2.1", "2105")
        application = self.open_application()
        application.wait_for_lines(2)
        application.choose("Remove", "Network Driver")
        self.expect_log(application, "Sysex request finished: 1")
        uninstalling = f"{NETWORK} 2.1/2105 State: Uninstalling [false false true]"
        self.expect_output(application, f"{CAMERA} {ENABLED}", uninstalling)
        self.mac.does("disable", CAMERA)
        application.choose("Refresh", "Camera Driver")
        self.expect_output(application, f"{CAMERA} 2.1/2105 State: Need reboot [false false false]", uninstalling)
        self.expect_look(application, NOTHING_INSTALLED, "Need reboot", "Uninstalling")
        self.expect_new_look(NOTHING_INSTALLED, "", "Uninstalling")

    def test_keeps_the_version_of_a_build_that_is_no_longer_enabled(self):
        self.mac.does("install", CAMERA, "2.0", "2004")
        application = self.open_application()
        application.wait_for_lines(2)
        self.mac.does("reset")
        self.mac.does("install", NETWORK, "2.1", "2105")
        self.mac.does("install", CAMERA, "2.1", "2105", "waiting")
        application.choose("Refresh", "Camera Driver")
        self.expect_output(
            application, f"{CAMERA} 2.0/2004 State: Await approval [false true false]", f"{NETWORK} {ENABLED}"
        )
        anew = self.open_application()
        self.expect_output(
            anew, f"{CAMERA} n/a State: Await approval [false true false]", f"{NETWORK} {ENABLED}"
        )
        self.expect_look(anew, AWAITING, "Await approval", "Enabled")


class AnApplicationThatIsClosed(MacTest):
    def test_while_an_extension_waits_shows_when_it_comes_back_what_became_of_it(self):
        application = self.open_application()
        application.press("Activate", "Camera Driver")
        application.wait_for_state("Camera Driver", "Await approval")
        self.desktop.display.close_window("Driver Manager")
        self.assertEqual(0, application.wait_for_end())
        self.expect_new_look(AWAITING, "Await approval", NOT_INSTALLED)
        self.mac.does("allow", CAMERA)
        self.expect_new_look(NOTHING_INSTALLED, "Enabled", NOT_INSTALLED)

    def test_loses_the_answer_of_its_request_and_is_told_again_when_it_asks_again(self):
        self.mac.does("install", CAMERA, "2.1", "2105", "waiting")
        application = self.open_application()
        application.press("Activate", "Camera Driver")
        self.expect_log(application, f"Sysex identifier {CAMERA}", "Sysex request needs user approval.")
        self.mac.does("allow", CAMERA)
        self.expect_log(application, "Sysex request finished: 0")


if __name__ == "__main__":
    unittest.main()
