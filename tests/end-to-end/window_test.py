import unittest

from application import NOTHING_INSTALLED, TITLE
from case import DesktopTest


class TheWindow(DesktopTest):
    """It needs no service."""

    def setUp(self):
        super().setUp()
        self.application = self.open_application()
        self.application.wait_for_banner(NOTHING_INSTALLED)

    def test_shows_the_camera_and_the_network_driver_but_not_the_base(self):
        self.assertEqual(["Camera Driver", "Network Driver"], self.application.cards())

    def test_has_a_content_of_450_by_230_that_cannot_be_resized(self):
        window = self.desktop.display.window(TITLE)
        size, hints = window.get_geometry(), window.get_wm_normal_hints()
        self.assertEqual((450, 230), (size.width, size.height))
        self.assertEqual((450, 230), (hints.min_width, hints.min_height))
        self.assertEqual((450, 230), (hints.max_width, hints.max_height))

    def test_ends_the_application_when_it_is_closed(self):
        self.desktop.display.close_window(TITLE)
        self.assertEqual(0, self.application.wait_for_end())

    def test_is_reached_and_pressed_by_keyboard_alone(self):
        self.desktop.display.wait_until_active(TITLE)
        self.desktop.display.type("Tab", "space")
        self.application.wait_for_line("Sysex identifier com.kelvra.ip-camera.cmio", self.application.errors)
        self.desktop.display.type("Tab", "Tab", "Return")
        self.application.wait_for_line("Sysex identifier com.kelvra.driverkit.usb-to-poe", self.application.errors)

    def test_offers_refresh_and_remove_in_the_menu_of_a_card(self):
        self.application.screen.press("Camera Driver actions")
        self.application.screen.wait_for_node("Refresh")
        self.application.screen.wait_for_node("Remove")

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
