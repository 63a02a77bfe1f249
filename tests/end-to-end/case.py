"""What the tests have in common: a desktop with a simulated Mac, the application, and System Settings."""

import unittest

from application import NOT_INSTALLED, Application, executable
from desktop import BUILD, NO_SERVICES, SERVICES, Desktop
from program import QuietProgram
from screen import Screen


SETTINGS = "System Settings"
BASE = "com.kelvra.driverkit.base"
CAMERA = "com.kelvra.ip-camera.cmio"
NETWORK = "com.kelvra.driverkit.usb-to-poe"


class Mac:
    """The simulated Mac of a desktop, by its command line."""

    def __init__(self, desktop):
        self.desktop = desktop
        self.does("applications", BUILD)

    def says(self, *words):
        """What the command line prints. It must not fail."""
        program = self.desktop.run(BUILD / "bin/sysextctl", *words)
        if program.status != 0:
            raise AssertionError(f"sysextctl {' '.join(map(str, words))} ends with {program.status}\n{program.said()}")
        return program.output

    does = says


class DesktopTest(unittest.TestCase):
    """A desktop on whose bus no service can be started. The tests of a class share it, one after the other."""

    services = NO_SERVICES

    @classmethod
    def setUpClass(cls):
        cls.desktop = Desktop(cls.services)
        cls.addClassCleanup(cls.desktop.close)

    def setUp(self):
        self.addCleanup(self.desktop.clear)

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

    def open_settings(self, application):
        """Waits until the application's window has given the keyboard away, which would close a menu of its."""
        application.screen.wait_for(application.screen.is_active, "the application is active")
        settings = Screen(self.desktop.start([BUILD / "bin/SystemSettings"], program=QuietProgram))
        application.screen.wait_for(lambda: not application.screen.is_active(), "System Settings is active")
        return settings
