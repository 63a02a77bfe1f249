import unittest

from application import ALL_SET, AWAITING, NOT_INSTALLED, NOTHING_INSTALLED
from bus import SERVICE
from case import CAMERA, NETWORK, MacTest

AWAITS = "n/a State: Await approval [false true false]"
ENABLED = "2.1/2105 State: Enabled [true false false]"


class TheRoad(MacTest):
    def test_leads_from_nothing_installed_to_all_set(self):
        application = self.open_application()
        self.expect_look(application, NOTHING_INSTALLED, NOT_INSTALLED, NOT_INSTALLED)
        settings = self.open_settings(application)

        self.activate(application, CAMERA, "Camera Driver", f"{CAMERA} {AWAITS}")
        self.expect_everywhere(application, AWAITING, "Await approval", NOT_INSTALLED)
        application.wait_for_icon("Camera Driver", enabled=False)
        self.allow(settings, "Camera", application, f"{CAMERA} {ENABLED}")
        self.expect_everywhere(application, NOTHING_INSTALLED, "Enabled", NOT_INSTALLED)
        application.wait_for_icon("Camera Driver", enabled=True)
        self.assertFalse(application.has_button("Activate", "Camera Driver"))

        self.activate(application, NETWORK, "Network Driver", f"{CAMERA} {ENABLED}", f"{NETWORK} {AWAITS}")
        self.expect_everywhere(application, AWAITING, "Enabled", "Await approval")
        self.allow(settings, "Network", application, f"{CAMERA} {ENABLED}", f"{NETWORK} {ENABLED}")
        self.expect_everywhere(application, ALL_SET, "Enabled", "Enabled")

    def activate(self, application, identifier, name, *lines):
        application.press("Activate", name)
        self.expect_log(application, f"Sysex identifier {identifier}", "Sysex request needs user approval.")
        self.expect_output(application, *lines)

    def allow(self, settings, name, application, *lines):
        settings.press(f"Allow {name}")
        self.expect_log(application, "Sysex request finished: 0")
        self.expect_output(application, *lines)

    def expect_everywhere(self, application, *look):
        """Expects this of the running application and of one that starts now."""
        self.expect_look(application, *look)
        self.expect_new_look(*look)


class AServiceCrash(MacTest):
    def test_during_an_approval_fails_the_request_but_not_the_next_one(self):
        application = self.open_application()
        self.expect_look(application, NOTHING_INSTALLED, NOT_INSTALLED, NOT_INSTALLED)
        application.press("Activate", "Camera Driver")
        application.wait_for_state("Camera Driver", "Await approval")
        self.desktop.bus.kill_service()
        application.wait_for_line("(An unknown error occurred.)", application.errors)
        self.assertFalse(self.desktop.bus.has(SERVICE))
        self.assertEqual("Await approval", application.state("Camera Driver"))
        application.press("Activate", "Camera Driver")
        lines = f"Sysex identifier {CAMERA}", "Sysex request needs user approval."
        application.screen.wait_for(lambda: application.errors[-2:] == list(lines), "the next press works")
        self.assertEqual(2, sum("Sysex identifier" in line for line in application.errors))
        self.mac.does("allow", CAMERA)
        application.wait_for_state("Camera Driver", "Enabled")


if __name__ == "__main__":
    unittest.main()
