"""The display and the session bus that benchmarks/run has made, and what happens there."""

import contextlib
import os
import signal
import subprocess
import time
from pathlib import Path

from gi.repository import Gio, GLib
from Xlib import X, display
from Xlib.ext import damage
from Xlib.protocol.event import ClientMessage

SERVICE = "com.kelvra.Simulator1"
SILENT = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
OBJECT = "/com/kelvra/Simulator1"
CONTROL = (SERVICE, OBJECT, SERVICE + ".Control")
DAEMON = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")


def wait_until(condition):
    while not condition():
        GLib.MainContext.default().iteration(False)
        time.sleep(0.01)


class Screen:
    """The display, watched for what is drawn on it."""

    def __init__(self):
        self.display = display.Display()
        self.root = self.display.screen().root
        self.display.damage_query_version()
        self.root.damage_create(damage.DamageReportRawRectangles)

    def wait_for_frame(self):
        """Waits until something as wide as a window is drawn."""
        while not (hasattr(seen := self.display.next_event(), "area") and seen.area.width == 450):
            pass

    def end(self, program):
        """Ends a program, and forgets what it drew."""
        program.kill()
        program.wait()
        self.display.sync()
        while self.display.pending_events():
            self.display.next_event()

    def longest_silence(self, condition):
        """Until the condition holds, the longest time in seconds from a ping, as of window managers, to its answer."""
        window = next(child for child in self.root.query_tree().children if child.get_geometry().width == 450)
        kind, ping = (self.display.intern_atom(name) for name in ("WM_PROTOCOLS", "_NET_WM_PING"))
        message = ClientMessage(window=window, client_type=kind, data=(32, [ping, X.CurrentTime, window.id, 0, 0]))
        self.root.change_attributes(event_mask=X.SubstructureRedirectMask)  # a window manager gets the answers
        longest = 0
        while not condition():
            sent = time.monotonic()
            window.send_event(message)
            while not isinstance(self.display.next_event(), ClientMessage):
                pass
            longest = max(longest, time.monotonic() - sent)
            time.sleep(0.001)
        self.root.change_attributes(event_mask=X.NoEventMask)
        return longest


class Bus:
    """The session bus, which starts the service at the first call, unless this stands in for it."""

    def __init__(self):
        self.connection = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.connection.set_exit_on_close(False)

    def call(self, method, *texts, of=DAEMON):
        arguments = GLib.Variant("(" + "s" * len(texts) + ")", texts)
        return self.connection.call_sync(*of, method, arguments, None, Gio.DBusCallFlags.NONE, -1, None).unpack()[0]

    def service(self):
        """Its process id; None if there is none."""
        with contextlib.suppress(GLib.Error):
            return self.call("GetConnectionUnixProcessID", SERVICE)

    def stop_service(self):
        if process := self.service():
            os.kill(process, signal.SIGKILL)
        wait_until(lambda: not self.service())

    def stand_in(self, extension):
        """Takes the place of the service for good, and keeps the last question about an extension for `answer`."""
        self.stop_service()
        self.extension, self.question = extension, None
        description = Path(__file__).parent.parent.joinpath("simulator", SERVICE + ".xml").read_text()
        self.connection.register_object(OBJECT, Gio.DBusNodeInfo.new_for_xml(description).interfaces[0], self.submit)
        Gio.bus_own_name_on_connection(self.connection, SERVICE, Gio.BusNameOwnerFlags.NONE, None, None)
        wait_until(self.service)

    def submit(self, _connection, client, _path, _interface, _method, arguments, invocation):
        token, _, extension = arguments
        if extension == self.extension:
            self.question = client, token
        invocation.return_value(None)

    def answer(self, number, program=None):
        """With that many enabled copies; then waits until the program, if there is one, has printed and painted."""
        wait_until(lambda: self.question)
        (client, token), self.question = self.question, None
        copies = [(self.extension, "2.1", "2105", True, False, False)] * number
        answer = GLib.Variant("(sa(sssbbb))", (token, copies))
        self.connection.emit_signal(client, OBJECT, SERVICE, "FoundProperties", answer)
        if program and program.stdout.readline():
            time.sleep(1)
