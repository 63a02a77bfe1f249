"""Base classes of the tests: a desktop with a simulated Mac, the application, and System Settings."""

import unittest

from application import NOT_INSTALLED, Application, executable
from desktop import BUILD, NO_SERVICES, SERVICES, Desktop
from program import QuietProgram
from screen import Screen


SETTINGS = "System Settings"
CAMERA = "com.kelvra.ip-camera.cmio"
NETWORK = "com.kelvra.driverkit.usb-to-poe"


class Mac:
    """The simulated Mac of a desktop, controlled with its command line."""

    def __init__(self, desktop):
        self.desktop = desktop
        self.does("applications", BUILD)

    def says(self, *words):
        """Runs a command, which must not fail. Returns what it prints."""
        program = self.desktop.run(BUILD / "bin/sysextctl", *words)
        if program.status != 0:
            raise AssertionError(f"sysextctl {' '.join(map(str, words))} ends with {program.status}\n{program.said()}")
        return program.output

    does = says


class DesktopTest(unittest.TestCase):
    """A desktop on whose bus no service can be started. The tests of a class share it."""

    services = NO_SERVICES

    @classmethod
    def setUpClass(cls):
        cls.desktop = Desktop(cls.services)
        cls.addClassCleanup(cls.desktop.close)

    def setUp(self):
        self.addCleanup(self.desktop.clear)

    def open_application(self):
        return self.desktop.start([executable()], program=Application)


class MacTest(DesktopTest):
    """A desktop whose Mac has nothing installed."""

    services = SERVICES

    def setUp(self):
        super().setUp()
        self.mac = Mac(self.desktop)

    def expect_output(self, application, *lines):
        """Expects these diagnostic lines next, in any order."""
        self.assertEqual(sorted(lines), application.wait_for_lines(len(lines)))

    def expect_log(self, application, *lines):
        """Expects these log lines next, in any order."""
        self.assertEqual(sorted(lines), application.wait_for_lines(len(lines), application.errors))

    def expect_look(self, application, banner, camera, network):
        application.wait_for_banner(banner)
        application.wait_for_state("Camera Driver", camera)
        application.wait_for_state("Network Driver", network)

    def expect_new_look(self, banner, camera, network):
        """Expects this of an application that starts now. The answer for the network driver arrives last."""
        application = self.open_application()
        if network != NOT_INSTALLED:
            application.wait_for_line(NETWORK)
        self.expect_look(application, banner, camera, network)
        application.end()

    def open_settings(self, application):
        """Opens System Settings and waits until the application has lost focus, which closes its menus."""
        application.screen.wait_for(application.screen.is_active, "the application is active")
        settings = Screen(self.desktop.start([BUILD / "bin/SystemSettings"], program=QuietProgram))
        application.screen.wait_for(lambda: not application.screen.is_active(), "System Settings is active")
        return settings
