import unittest

from application import NOTHING_INSTALLED, TITLE
from case import DesktopTest


class TheWindow(DesktopTest):
    """It needs no service."""

    def setUp(self):
        super().setUp()
        self.application = self.open_application()
        self.application.wait_for_banner(NOTHING_INSTALLED)

    def test_is_reached_and_pressed_by_keyboard_alone(self):
        self.desktop.display.wait_until_active(TITLE)
        self.desktop.display.type("Tab", "space")
        self.application.wait_for_line("Sysex identifier com.kelvra.ip-camera.cmio", self.application.errors)
        self.desktop.display.type("Tab", "Tab", "Return")
        self.application.wait_for_line("Sysex identifier com.kelvra.driverkit.usb-to-poe", self.application.errors)

    def test_keeps_running_without_a_service_and_logs_each_failure(self):
        self.application.press("Activate", "Camera Driver")
        failed = "Sysex request failed: "
        self.application.screen.wait_for(lambda: self.lines(failed) == 4, "four requests fail")
        self.assertEqual(self.lines("(An unknown error occurred.)"), 4)
        self.assertEqual(NOTHING_INSTALLED, self.application.banner())

    def lines(self, text):
        return sum(text in line for line in self.application.errors)


if __name__ == "__main__":
    unittest.main()
