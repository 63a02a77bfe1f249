import re

import support

DRAWINGS = support.ROOT / "assets" / "icons"
RENDERED = DRAWINGS / "rendered"

# What another release of the renderer may round otherwise. A stroke that moves by a tenth of a unit differs by more.
TOLERANCE = 8

renderer = support.load("render-icons")


def pixels(png):
    return b"".join(renderer.channels(png))


def look_alike(one, other):
    return len(one) == len(other) and all(abs(a - b) <= TOLERANCE for a, b in zip(one, other))


class TheImages(support.WithFolder):
    def page(self, pdf):
        """The pixels of a PDF's page, eight for each of its units."""
        file = self.place / "page.pdf"
        file.write_bytes(pdf)
        support.run("pdftocairo", "-png", "-transp", "-r", "576", "-singlefile", file, self.place / "page", check=True)
        return pixels((self.place / "page.png").read_bytes())

    def test_exist_for_every_drawing_and_nothing_else(self):
        drawings = {f"{svg.stem}.pdf" for svg in DRAWINGS.glob("*.svg")} - {"AppIcon.pdf"}
        self.assertEqual({file.name for file in RENDERED.iterdir()}, drawings | {"AppIcon.icns"})

    def test_look_each_like_a_fresh_rendering_of_the_drawing(self):
        for file in sorted(RENDERED.glob("*.pdf")):
            with self.subTest(file.name):
                fresh = renderer.pdf(DRAWINGS / f"{file.stem}.svg")
                self.assertTrue(look_alike(self.page(file.read_bytes()), self.page(fresh)))

    def test_differ_from_a_drawing_changed_by_a_tenth_of_a_unit(self):
        drawing = (DRAWINGS / "Ethernet.svg").read_text()
        moved = self.place / "moved.svg"
        moved.write_text(drawing.replace("M7 6v3", "M7.1 6v3"))
        self.assertNotEqual(moved.read_text(), drawing)
        self.assertFalse(
            look_alike(self.page(renderer.pdf(moved)), self.page((RENDERED / "Ethernet.pdf").read_bytes()))
        )

    def test_are_as_many_points_wide_as_the_drawing_has_units_and_contain_no_pixels(self):
        for name, points in (("Ethernet", 22), ("VideoCameraDark", 22), ("trash", 20)):
            with self.subTest(name):
                facts = support.run("pdfinfo", RENDERED / f"{name}.pdf", check=True).stdout
                self.assertRegex(facts, rf"Page size: +{points} x {points} pts")
                images = support.run("pdfimages", "-list", RENDERED / f"{name}.pdf", check=True).stdout
                self.assertEqual(len(images.splitlines()), 2, "only the table's head")


class TheApplicationIcon(support.WithFolder):
    icon = RENDERED / "AppIcon.icns"

    def assert_drawn(self, picture, width):
        with self.subTest(width):
            drawn = renderer.png(DRAWINGS / "AppIcon.svg", width)
            self.assertTrue(look_alike(pixels(picture), pixels(drawn)))

    def test_looks_like_a_fresh_rendering_of_its_drawing(self):
        held = re.findall(rb"(ic\d\d).{4}(\x89PNG.*?IEND.{4})", self.icon.read_bytes(), re.DOTALL)
        self.assertEqual([kind for kind, _ in held], [kind for kind, _ in renderer.PICTURES])
        for (_, picture), (_, width) in zip(held, renderer.PICTURES):
            self.assert_drawn(picture, width)

    def test_has_small_pictures_that_another_reader_reads_correctly(self):
        support.run("icns2png", "-x", "-o", self.place, self.icon, check=True)
        for width in (16, 32):
            self.assert_drawn((self.place / f"AppIcon_{width}x{width}x32.png").read_bytes(), width)
