import os
import signal
import unittest

from application import AWAITING, NOT_INSTALLED, NOTHING_INSTALLED
from bus import SERVICE
from case import MacTest
from mac import CAMERA

UNKNOWN_ERROR = "(An unknown error occurred.)"


class AServiceThatDies(MacTest):
    def setUp(self):
        super().setUp()
        self.application = self.open_application()
        self.expect_look(self.application, NOTHING_INSTALLED, NOT_INSTALLED, NOT_INSTALLED)

    def expect_failure(self):
        """One line that says what happened, and nothing that is asked again by itself."""
        self.application.wait_for_line(UNKNOWN_ERROR, self.application.errors)
        self.assertFalse(self.desktop.bus.has(SERVICE))
        self.assertEqual(1, sum("Sysex identifier" in line for line in self.application.errors))

    def test_before_it_answers_fails_the_request_and_the_next_press_works(self):
        service = self.mac.process()
        os.kill(service, signal.SIGSTOP)
        self.application.press("Activate", "Camera Driver")
        self.application.wait_for_line(f"Sysex identifier {CAMERA}", self.application.errors)
        os.kill(service, signal.SIGKILL)
        self.desktop.bus.wait_for_end_of(SERVICE)
        self.expect_failure()
        self.application.press("Activate", "Camera Driver")
        self.application.wait_for_line("Sysex request needs user approval.", self.application.errors)
        self.expect_look(self.application, AWAITING, "Await approval", NOT_INSTALLED)

    def test_while_the_user_is_asked_fails_the_request_and_the_next_press_works(self):
        self.application.press("Activate", "Camera Driver")
        self.application.wait_for_state("Camera Driver", "Await approval")
        self.mac.kill_service()
        self.expect_failure()
        self.assertEqual("Await approval", self.application.state("Camera Driver"))
        self.application.press("Activate", "Camera Driver")
        lines = f"Sysex identifier {CAMERA}", "Sysex request needs user approval."
        self.application.screen.wait_for(lambda: self.application.errors[-2:] == list(lines), "the next press works")
        self.mac.does("allow", CAMERA)
        self.application.wait_for_state("Camera Driver", "Enabled")


if __name__ == "__main__":
    unittest.main()
