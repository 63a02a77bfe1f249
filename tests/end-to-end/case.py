"""What the tests have in common: a desktop with a simulated Mac, the application, and System Settings."""

import unittest

from application import NOT_INSTALLED, Application, executable
from desktop import BUILD, NO_SERVICES, SERVICES, Desktop
from mac import NETWORK, Mac
from program import QuietProgram
from screen import Screen


class DesktopTest(unittest.TestCase):
    """A desktop on whose bus no service can be started."""

    services = NO_SERVICES

    def setUp(self):
        self.desktop = Desktop(self.services)
        self.addCleanup(self.desktop.close)

    def open_application(self, command=None, **options):
        return self.desktop.start(command or [executable()], program=Application, **options)


class MacTest(DesktopTest):
    """A desktop whose Mac has nothing installed."""

    services = SERVICES

    def setUp(self):
        super().setUp()
        self.mac = Mac(self.desktop)

    def expect_output(self, application, *lines):
        """The diagnostic lines that come next, in any order, and no others."""
        self.assertEqual(sorted(lines), application.wait_for_lines(len(lines)))

    def expect_log(self, application, *lines):
        """The log lines that come next, in any order, and no others."""
        self.assertEqual(sorted(lines), application.wait_for_lines(len(lines), application.errors))

    def expect_look(self, application, banner, camera, network):
        application.wait_for_banner(banner)
        application.wait_for_state("Camera Driver", camera)
        application.wait_for_state("Network Driver", network)

    def expect_new_look(self, banner, camera, network):
        """What an application that is started now makes of the Mac's answers. The network driver's comes last."""
        application = self.open_application()
        if network != NOT_INSTALLED:
            application.wait_for_line(NETWORK)
        self.expect_look(application, banner, camera, network)
        application.end()

    def open_settings(self):
        return Screen(self.desktop.start([BUILD / "bin/SystemSettings"], program=QuietProgram))
