"""A private session bus, and the names on it."""

import os
import signal

from gi.repository import Gio, GLib

from events import note, wait_until
from program import Program

SERVICE = "com.kelvra.Simulator1"


class Daemon(Program):
    """The services that it starts write to its error output."""

    usual_errors = ("dbus-daemon[", "sysextd: dies in the middle of a request, as ordered")


class Bus:
    """Started with `start`, which starts a program. Each name that comes or goes ends a wait."""

    def __init__(self, start, folder, services):
        command = ["dbus-daemon", "--session", "--nofork", "--print-address", f"--address=unix:dir={folder}"]
        daemon = start(command, {"XDG_DATA_DIRS": f"{services}:/usr/share"}, program=Daemon)
        wait_until(lambda: daemon.output, "the bus tells its address")
        self.address = daemon.output[0]
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.connection = Gio.DBusConnection.new_for_address_sync(self.address, flags, None, None)
        self.connection.set_exit_on_close(False)
        self.listen("org.freedesktop.DBus", None)
        self.listen(None, SERVICE)

    def listen(self, sender, interface):
        self.connection.signal_subscribe(sender, interface, None, None, None, Gio.DBusSignalFlags.NONE, note)

    def ask(self, method, *texts):
        arguments = GLib.Variant("(" + "s" * len(texts) + ")", texts)
        answer = self.connection.call_sync(
            "org.freedesktop.DBus",
            "/org/freedesktop/DBus",
            "org.freedesktop.DBus",
            method,
            arguments,
            None,
            Gio.DBusCallFlags.NONE,
            -1,
            None,
        )
        return answer.unpack()[0] if answer.n_children() else None

    def has(self, name):
        return self.ask("NameHasOwner", name)

    def activatable(self):
        """The names whose services the bus can start."""
        return self.ask("ListActivatableNames")

    def wait_for(self, name):
        wait_until(lambda: self.has(name), f"{name} is on the bus")

    def wait_for_end_of(self, name):
        wait_until(lambda: not self.has(name), f"{name} leaves the bus")

    def process_of(self, name):
        """The process id of the owner of the name."""
        return self.ask("GetConnectionUnixProcessID", name)

    def kill_service(self):
        """Ends the service as a crash does. It has saved what it answered."""
        if self.has(SERVICE):
            os.kill(self.process_of(SERVICE), signal.SIGKILL)
            self.wait_for_end_of(SERVICE)

    def close(self):
        self.connection.close_sync(None)
