import pathlib
import subprocess
import tempfile
import unittest

import support

DRAWINGS = support.ROOT / "assets" / "icons"
RENDERED = DRAWINGS / "rendered"

# What another release of the renderer may round otherwise. A stroke that moves by a tenth of a unit differs by more.
TOLERANCE = 8

renderer = support.load("render-icons")


def chunks(icns):
    """The type and content of each element of an .icns."""
    at = 8
    while at < len(icns):
        kind, length = icns[at : at + 4], int.from_bytes(icns[at + 4 : at + 8], "big")
        yield kind, icns[at + 8 : at + length]
        at += length


def unpack(data, length):
    """The inverse of the renderer's run-length packing. Returns the bytes, and what of the data follows them."""
    unpacked, at = bytearray(), 0
    while len(unpacked) < length:
        if data[at] < 128:
            unpacked += data[at + 1 : at + 2 + data[at]]
            at += 2 + data[at]
        else:
            unpacked += data[at + 1 : at + 2] * (data[at] - 125)
            at += 2
    return bytes(unpacked), data[at:]


def pixels(kind, content):
    if content.startswith(b"\x89PNG"):
        return b"".join(renderer.channels(content))
    if kind.endswith(b"8mk"):
        return content
    width = {b"is32": 16, b"il32": 32}[kind]
    colours = b""
    for _ in range(3):
        channel, content = unpack(content, width * width)
        colours += channel
    return colours


def page(pdf):
    """The pixels of a PDF's page, eight for each of its units."""
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder) / "page"
        command = ["pdftocairo", "-png", "-transp", "-r", "576", "-singlefile", "-", str(file)]
        subprocess.run(command, input=pdf, check=True)
        return b"".join(renderer.channels(file.with_suffix(".png").read_bytes()))


def look_alike(one, other):
    return len(one) == len(other) and all(abs(a - b) <= TOLERANCE for a, b in zip(one, other))


class TheIcons(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.fresh = pathlib.Path(folder.name)
        renderer.main(cls.fresh)

    def test_every_drawing_and_nothing_else_is_rendered(self):
        self.assertEqual({file.name for file in RENDERED.iterdir()}, {file.name for file in self.fresh.iterdir()})

    def test_each_committed_image_looks_like_a_fresh_rendering_of_its_drawing(self):
        for file in sorted(self.fresh.glob("*.pdf")):
            with self.subTest(file.name):
                self.assertTrue(look_alike(page((RENDERED / file.name).read_bytes()), page(file.read_bytes())))

    def test_the_committed_application_icon_looks_like_a_fresh_rendering_of_its_drawing(self):
        committed = list(chunks((RENDERED / "AppIcon.icns").read_bytes()))
        fresh = list(chunks((self.fresh / "AppIcon.icns").read_bytes()))
        self.assertEqual([kind for kind, _ in committed], [kind for kind, _ in fresh])
        for (kind, one), (_, other) in zip(committed, fresh):
            with self.subTest(kind):
                self.assertTrue(look_alike(pixels(kind, one), pixels(kind, other)))

    def test_a_drawing_that_was_changed_by_a_tenth_of_a_unit_is_told_from_its_rendering(self):
        drawing = (DRAWINGS / "Ethernet.svg").read_text()
        moved = self.fresh / "moved.svg"
        moved.write_text(drawing.replace("M7 6v3", "M7.1 6v3"))
        self.addCleanup(moved.unlink)
        self.assertNotEqual(moved.read_text(), drawing)
        self.assertFalse(look_alike(page(renderer.pdf(moved)), page((RENDERED / "Ethernet.pdf").read_bytes())))

    def test_an_image_is_as_many_points_wide_as_its_drawing_has_units(self):
        for name, points in (("Ethernet", 22), ("VideoCameraDark", 22), ("trash", 20)):
            with self.subTest(name):
                command = ["pdfinfo", str(RENDERED / f"{name}.pdf")]
                facts = subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout
                self.assertRegex(facts, rf"Page size: +{points} x {points} pts")

    def test_an_image_is_made_of_lines_and_not_of_pixels(self):
        for file in sorted(RENDERED.glob("*.pdf")):
            with self.subTest(file.name):
                command = ["pdfimages", "-list", str(file)]
                images = subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout
                self.assertEqual(len(images.splitlines()), 2, "only the table's head")

    def test_rendering_twice_gives_the_same_bytes(self):
        with tempfile.TemporaryDirectory() as folder:
            again = pathlib.Path(folder)
            renderer.main(again)
            for file in sorted(self.fresh.iterdir()):
                with self.subTest(file.name):
                    self.assertEqual((again / file.name).read_bytes(), file.read_bytes())

    def test_another_reader_finds_the_small_pictures_of_the_application_icon_as_they_were_drawn(self):
        with tempfile.TemporaryDirectory() as folder:
            command = ["icns2png", "-x", "-o", folder, str(RENDERED / "AppIcon.icns")]
            subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            for width in (16, 32):
                with self.subTest(width):
                    read = (pathlib.Path(folder) / f"AppIcon_{width}x{width}x32.png").read_bytes()
                    drawn = renderer.png(DRAWINGS / "AppIcon.svg", width)
                    self.assertTrue(look_alike(pixels(b"", read), pixels(b"", drawn)))


if __name__ == "__main__":
    unittest.main()
