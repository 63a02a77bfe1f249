"""The simulated Mac of a desktop: its Applications folder, its command line, its service."""

import os
import signal

from bus import SERVICE
from desktop import BUILD

BASE = "com.kelvra.driverkit.base"
CAMERA = "com.kelvra.ip-camera.cmio"
NETWORK = "com.kelvra.driverkit.usb-to-poe"


class Mac:
    def __init__(self, desktop, applications=BUILD):
        self.desktop = desktop
        self.does("applications", applications)

    def says(self, *words):
        """What the command line prints. It must not fail."""
        program = self.desktop.run(BUILD / "bin/sysextctl", *words)
        if program.status != 0:
            raise AssertionError(f"sysextctl {' '.join(map(str, words))} ends with {program.status}\n{program.said()}")
        return program.output

    does = says

    def process(self):
        return self.desktop.bus.process_of(SERVICE)

    def kill_service(self):
        os.kill(self.process(), signal.SIGKILL)
        self.desktop.bus.wait_for_end_of(SERVICE)
