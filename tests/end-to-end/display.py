"""A private X display: its pixels, its windows, and the keyboard."""

import os
import struct
import zlib
from typing import NamedTuple

from gi.repository import GLib
from Xlib import X, XK, error
from Xlib import display as xlib
from Xlib.ext import damage, xtest
from Xlib.protocol import event

import events
from events import note, wait_until


class Display:
    """Started with `start`, which starts a program. Keeps its pixels in the folder. Drawing ends a wait."""

    def __init__(self, start, folder):
        self.folder = folder
        self.happened = 0
        reading, writing = os.pipe()
        command = ["Xvfb", "-displayfd", writing, "-screen", "0", "1280x1024x24", "-fbdir", folder, "-noreset"]
        self.server = start([*command, "-nolisten", "tcp"], pass_fds=[writing])
        os.close(writing)
        with open(reading) as numbers:
            self.name = ":" + numbers.readline().strip()
        self.connection = xlib.Display(self.name)
        self.root = self.connection.screen().root
        self.listen()
        self.window_manager = start(["openbox", "--sm-disable"], environment={"DISPLAY": self.name})
        wait_until(lambda: self.property(self.root, "_NET_SUPPORTING_WM_CHECK"), "the window manager is there")

    def listen(self):
        self.connection.damage_query_version()
        self.root.damage_create(damage.DamageReportRawRectangles)
        self.root.change_attributes(event_mask=X.PropertyChangeMask | X.SubstructureNotifyMask)
        self.connection.flush()
        self.watch = GLib.unix_fd_add_full(
            GLib.PRIORITY_DEFAULT, self.connection.fileno(), GLib.IOCondition.IN, lambda *_: self.read() or True
        )
        events.already_read.append(self.read)

    def read(self):
        """Handles pending events."""
        number = self.connection.pending_events()
        self.happened += number
        for _ in range(number):
            self.connection.next_event()
            note()

    def wait_until_at_rest(self):
        """Waits until nothing has been drawn for half a second. Only for pictures: a test waits for an event."""
        seen = None
        while seen != self.happened:
            seen, passed = self.happened, []
            GLib.timeout_add(500, lambda: passed.append(True) or note())
            wait_until(lambda: passed, "half a second passes")

    def close(self):
        events.already_read.remove(self.read)
        GLib.source_remove(self.watch)
        self.connection.close()

    def property(self, window, name):
        """The value, or None if there is none or the window is gone."""
        try:
            found = window.get_full_property(self.connection.intern_atom(name), X.AnyPropertyType)
        except error.BadWindow:
            return None
        return found.value if found else None

    def clients(self):
        numbers = self.property(self.root, "_NET_CLIENT_LIST") or []
        return [self.connection.create_resource_object("window", number) for number in numbers]

    def windows(self, title):
        """The windows with this title, in the order in which the window manager listed them."""
        return [window for window in self.clients() if self.property(window, "_NET_WM_NAME") == title.encode()]

    def window(self, title):
        return wait_until(lambda: self.windows(title), f"there is a window {title!r}")[0]

    def close_window(self, title):
        """Closes a window as a user does, through the window manager."""
        self.tell_window_manager("_NET_CLOSE_WINDOW", self.window(title), X.CurrentTime, 2)

    def raise_window(self, title):
        """Raises a window and gives it focus."""
        self.tell_window_manager("_NET_ACTIVE_WINDOW", self.window(title), 2, X.CurrentTime)
        self.wait_until_active(title)

    def tell_window_manager(self, name, window, *data):
        kind = self.connection.intern_atom(name)
        message = event.ClientMessage(window=window, client_type=kind, data=(32, [*data, 0, 0, 0, 0, 0][:5]))
        self.root.send_event(message, event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.connection.flush()

    def wait_until_active(self, title):
        """Waits until a window has focus."""
        window = self.window(title)
        wait_until(lambda: window.id in (self.property(self.root, "_NET_ACTIVE_WINDOW") or []), f"{title!r} is active")

    def type(self, *keys):
        """Presses and releases each key in the window that has focus."""
        for key in keys:
            code = self.connection.keysym_to_keycode(XK.string_to_keysym(key))
            xtest.fake_input(self.connection, X.KeyPress, code)
            xtest.fake_input(self.connection, X.KeyRelease, code)
        self.connection.flush()

    def move_pointer(self, x, y):
        xtest.fake_input(self.connection, X.MotionNotify, x=x, y=y)
        self.connection.flush()

    def place_of(self, title):
        """Left, top, right, and bottom of a window, without its frame."""
        window = self.window(title)
        size, place = window.get_geometry(), self.root.translate_coords(window, 0, 0)
        return place.x, place.y, place.x + size.width, place.y + size.height

    def picture(self):
        """What the display shows now."""
        return picture_in(self.folder / "Xvfb_screen0")

    def picture_of(self, title):
        """What a window shows now, without its frame."""
        left, top, right, bottom = self.place_of(title)
        return self.picture().part(left, top, right - left, bottom - top)


HEADER = struct.Struct(">25I")


class Picture(NamedTuple):
    width: int
    height: int
    rows: tuple  # of bytes: red, green, blue for each pixel

    def part(self, x, y, width, height):
        """The rectangle of this picture with this width and height."""
        return Picture(width, height, tuple(row[3 * x : 3 * (x + width)] for row in self.rows[y : y + height]))

    def png(self):
        head = struct.pack(">2I5B", self.width, self.height, 8, 2, 0, 0, 0)
        body = zlib.compress(b"".join(b"\0" + row for row in self.rows), 9)
        return b"\x89PNG\r\n\x1a\n" + b"".join(
            chunk(name, data) for name, data in ((b"IHDR", head), (b"IDAT", body), (b"IEND", b""))
        )


def chunk(name, data):
    return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))


def picture_in(path):
    """The picture in a display's file: an X window dump with 32 bits per pixel, blue first."""
    data = path.read_bytes()
    fields = HEADER.unpack_from(data)
    size, width, height, bits, stride, colors = fields[0], fields[4], fields[5], fields[11], fields[12], fields[19]
    if bits != 32:
        raise ValueError(f"{path}: {bits} bits a pixel")
    first = size + 12 * colors
    return Picture(width, height, tuple(rgb(data[first + y * stride :][: 4 * width]) for y in range(height)))


def rgb(pixels):
    row = bytearray(len(pixels) // 4 * 3)
    row[0::3], row[1::3], row[2::3] = pixels[2::4], pixels[1::4], pixels[0::4]
    return bytes(row)
