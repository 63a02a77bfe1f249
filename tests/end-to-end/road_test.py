import unittest

from application import ALL_SET, AWAITING, NOT_INSTALLED, NOTHING_INSTALLED
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
        self.assertIsNone(application.screen.find("Activate Camera Driver"))

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


if __name__ == "__main__":
    unittest.main()
