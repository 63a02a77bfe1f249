"""A private desktop for one test: a display, a window manager, a session bus, and assistive technology."""

import os
import shutil
import tempfile
from pathlib import Path

from bus import Bus
from display import Display
from program import Program

BUILD = Path(os.environ["DRIVER_MANAGER_BUILD"])
SERVICES = BUILD / "share"
NO_SERVICES = None

KEPT = ("PATH", "HOME", "LANG", "UBSAN_OPTIONS")
FOREIGN = ("DBUS_SESSION_BUS_ADDRESS", "WAYLAND_DISPLAY", "AT_SPI_BUS_ADDRESS")


class Desktop:
    """Everything in a user's session, in a temporary folder. Call close() when done."""

    def __init__(self, services):
        self.temporary = tempfile.TemporaryDirectory(prefix="driver-manager-")
        self.folder = Path(self.temporary.name)
        self.programs = []
        self.environment = self.make_environment()
        self.display = Display(self.start, self.folder)
        self.environment["DISPLAY"] = self.display.name
        self.bus = Bus(self.start, self.folder, services or self.folder / "no services")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self.bus.address
        self.start(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"])
        self.bus.wait_for("org.a11y.Bus")
        os.environ.update(self.environment)
        self.own = len(self.programs)

    def make_environment(self):
        for name in FOREIGN:
            os.environ.pop(name, None)
        runtime = self.folder / "runtime"
        runtime.mkdir(mode=0o700)
        return {name: os.environ[name] for name in KEPT if name in os.environ} | {
            "XDG_RUNTIME_DIR": str(runtime),
            "XDG_STATE_HOME": str(self.folder / "state"),
            "XDG_CONFIG_HOME": str(self.folder / "config"),
            "XDG_DATA_DIRS": "/usr/share",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "QT_QPA_PLATFORM": "xcb",
            "ASAN_OPTIONS": "detect_leaks=0",  # the toolkit's plugins never free some memory
        }

    def start(self, command, environment=(), program=Program, **options):
        """Starts a program that ends with the desktop."""
        started = program(command, self.environment | dict(environment), **options)
        self.programs.append(started)
        return started

    def run(self, *command):
        """Runs a program to its end."""
        program = self.start(command)
        program.wait_for_end()
        program.wait_for_last_line()
        return program

    def clear(self):
        """Ends all programs and resets the Mac. Fails if a program has printed an unexpected error."""
        self.end(self.programs[self.own :])
        self.bus.kill_service()
        shutil.rmtree(self.folder / "state", ignore_errors=True)
        unusual = [f"{program.name}: {line}" for program in self.programs for line in program.take_unusual_errors()]
        del self.programs[self.own :]
        if unusual:
            raise AssertionError("\n".join(["unexpected lines on the error output:", *unusual]))

    def close(self):
        self.bus.close()
        self.display.close()
        self.end(self.programs)
        self.temporary.cleanup()

    def end(self, programs):
        for program in reversed(programs):
            program.end()
        for program in programs:
            program.wait_for_last_line()
