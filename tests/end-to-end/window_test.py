import unittest

from application import NOTHING_INSTALLED, TITLE
from case import DesktopTest


class TheWindow(DesktopTest):
    """It needs no service."""

    def test_is_reached_and_pressed_by_keyboard_alone(self):
        application = self.open_application()
        application.wait_for_banner(NOTHING_INSTALLED)
        self.desktop.display.wait_until_active(TITLE)
        self.desktop.display.type("Tab", "space")
        application.wait_for_line("Sysex identifier com.kelvra.ip-camera.cmio", application.errors)
        self.desktop.display.type("Tab", "Tab", "Return")
        application.wait_for_line("Sysex identifier com.kelvra.driverkit.usb-to-poe", application.errors)


if __name__ == "__main__":
    unittest.main()
