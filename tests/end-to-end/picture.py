"""Pictures of a display that keeps its pixels in a file."""

import struct
import zlib
from typing import NamedTuple

HEADER = struct.Struct(">25I")


class Picture(NamedTuple):
    width: int
    height: int
    rows: tuple  # of bytes: red, green, blue for each pixel

    def part(self, x, y, width, height):
        """The rectangle of this picture that is so many pixels wide and high."""
        return Picture(width, height, tuple(row[3 * x : 3 * (x + width)] for row in self.rows[y : y + height]))

    def pixel(self, x, y):
        return tuple(self.rows[y][3 * x : 3 * x + 3])

    def png(self):
        head = struct.pack(">2I5B", self.width, self.height, 8, 2, 0, 0, 0)
        body = zlib.compress(b"".join(b"\0" + row for row in self.rows), 9)
        return b"\x89PNG\r\n\x1a\n" + b"".join(
            chunk(name, data) for name, data in ((b"IHDR", head), (b"IDAT", body), (b"IEND", b""))
        )


def chunk(name, data):
    return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))


def of_display(path):
    """The picture in a display's file: an X window dump of 32 bits a pixel, blue first."""
    data = path.read_bytes()
    fields = HEADER.unpack_from(data)
    size, width, height, bits, stride, colours = fields[0], fields[4], fields[5], fields[11], fields[12], fields[19]
    if bits != 32:
        raise ValueError(f"{path}: {bits} bits a pixel")
    first = size + 12 * colours
    return Picture(width, height, tuple(rgb(data[first + y * stride :][: 4 * width]) for y in range(height)))


def rgb(pixels):
    row = bytearray(len(pixels) // 4 * 3)
    row[0::3], row[1::3], row[2::3] = pixels[2::4], pixels[1::4], pixels[0::4]
    return bytes(row)
