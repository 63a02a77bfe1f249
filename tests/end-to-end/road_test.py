import unittest

from application import ALL_SET, AWAITING, NOT_INSTALLED, NOTHING_INSTALLED, TITLE
from case import MacTest
from mac import BASE, CAMERA, NETWORK

AWAITS = "n/a State: Await approval [false true false]"
ENABLED = "2.1/2105 State: Enabled [true false false]"


class TheRoad(MacTest):
    def test_of_a_person_leads_from_nothing_installed_to_all_set(self):
        application = self.open_application()
        settings = self.open_settings()
        self.expect_look(application, NOTHING_INSTALLED, NOT_INSTALLED, NOT_INSTALLED)

        application.press("Activate", "Camera Driver")
        self.expect_log(application, f"Sysex identifier {CAMERA}", "Sysex request needs user approval.")
        self.expect_output(application, f"{CAMERA} {AWAITS}")
        self.expect_look(application, AWAITING, "Await approval", NOT_INSTALLED)
        self.expect_new_look(AWAITING, "Await approval", NOT_INSTALLED)
        self.expect_icon(application, "Camera Driver", dark=False)

        settings.press("Allow Camera")
        self.expect_log(application, "Sysex request finished: 0")
        self.expect_output(application, f"{CAMERA} {ENABLED}")
        self.expect_look(application, NOTHING_INSTALLED, "Enabled", NOT_INSTALLED)
        self.expect_new_look(NOTHING_INSTALLED, "Enabled", NOT_INSTALLED)
        self.expect_icon(application, "Camera Driver", dark=True)
        self.assertFalse(application.has_button("Activate", "Camera Driver"))

        application.press("Activate", "Network Driver")
        self.expect_log(application, f"Sysex identifier {NETWORK}", "Sysex request needs user approval.")
        self.expect_output(application, f"{CAMERA} {ENABLED}", f"{NETWORK} {AWAITS}")
        self.expect_look(application, AWAITING, "Enabled", "Await approval")
        self.expect_new_look(AWAITING, "Enabled", "Await approval")

        settings.press("Allow Network")
        self.expect_log(application, "Sysex request finished: 0")
        self.expect_output(application, f"{CAMERA} {ENABLED}", f"{NETWORK} {ENABLED}")
        self.expect_look(application, ALL_SET, "Enabled", "Enabled")
        self.expect_new_look(ALL_SET, "Enabled", "Enabled")
        self.expect_icon(application, "Network Driver", dark=True)

    def expect_icon(self, application, name, dark):
        application.wait_for_icon(name, enabled=dark)
        display = self.desktop.display
        display.raise_window(TITLE)
        application.screen.wait_for(
            lambda: application.icon_is_dark(name, display) == dark, f"the icon of {name} is {'dark' if dark else 'light'}"
        )


class TheMenu(MacTest):
    def test_refreshes_what_was_allowed_meanwhile(self):
        self.mac.does("install", CAMERA, "2.1", "2105", "waiting")
        application = self.open_application()
        self.expect_output(application, f"{CAMERA} {AWAITS}")
        self.mac.does("allow", CAMERA)
        application.choose("Refresh", "Camera Driver")
        self.expect_output(application, f"{CAMERA} {ENABLED}")
        self.expect_look(application, NOTHING_INSTALLED, "Enabled", NOT_INSTALLED)

    def test_removes_an_extension_once_an_administrator_agrees_until_the_restart_takes_it_away(self):
        self.mac.does("install", CAMERA, "2.1", "2105")
        self.mac.does("install", NETWORK, "2.1", "2105")
        application = self.open_application()
        self.expect_look(application, ALL_SET, "Enabled", "Enabled")
        application.wait_for_lines(2)
        settings = self.open_settings()
        application.choose("Remove", "Camera Driver")
        settings.wait_for_text("Driver Manager wants to remove Camera.")
        self.expect_look(application, ALL_SET, "Enabled", "Enabled")
        settings.press("Authorize Camera")
        self.expect_log(application, "Sysex request finished: 0")
        self.expect_output(
            application, f"{CAMERA} 2.1/2105 State: Uninstalling [false false true]", f"{NETWORK} {ENABLED}"
        )
        self.expect_look(application, NOTHING_INSTALLED, "Uninstalling", "Enabled")
        self.expect_new_look(NOTHING_INSTALLED, "Uninstalling", "Enabled")
        self.mac.does("restart")
        application.wait_for_end()
        self.expect_new_look(NOTHING_INSTALLED, NOT_INSTALLED, "Enabled")


class AnOlderBuild(MacTest):
    def test_is_upgraded_in_place(self):
        self.mac.does("install", CAMERA, "2.0", "2004")
        application = self.open_application()
        self.expect_output(application, f"{CAMERA} 2.0/2004 State: Enabled [true false false]")
        application.press("Upgrade", "Camera Driver")
        self.expect_log(
            application,
            f"Sysex identifier {CAMERA}",
            f"Sysex replacement request: <{CAMERA} 2.0/2004> <{CAMERA} 2.1/2105>",
            "Sysex request finished: 0",
        )
        self.expect_output(application, f"{CAMERA} 2.1/2105 State: Enabled [true false true]")
        application.screen.wait_for(lambda: not application.has_button("Upgrade", "Camera Driver"), "no more upgrade")
        self.expect_new_look(NOTHING_INSTALLED, "Enabled", NOT_INSTALLED)


class TheBaseDriver(MacTest):
    def test_is_queried_and_never_shown(self):
        self.mac.does("install", BASE, "2.1", "2105")
        self.mac.does("install", NETWORK, "2.1", "2105")
        application = self.open_application()
        self.expect_output(application, f"{BASE} {ENABLED}", f"{NETWORK} {ENABLED}")
        self.expect_look(application, NOTHING_INSTALLED, NOT_INSTALLED, "Enabled")
        self.assertEqual(["Camera Driver", "Network Driver"], application.cards())


if __name__ == "__main__":
    unittest.main()
