import os
import plistlib
import shutil
import signal
import unittest

from application import BUNDLE, executable
from case import DesktopTest

WITHOUT_PRIVILEGES = ["setpriv", "--bounding-set=-all"]


class ABrokenBundle(DesktopTest):
    """It stops the program with one line that names the file and the reason, whatever else is well."""

    def setUp(self):
        super().setUp()
        self.bundle = self.desktop.folder / "a copy" / BUNDLE.name
        shutil.copytree(BUNDLE, self.bundle)
        self.information = self.bundle / "Contents/Info.plist"

    def expect_stop(self, reason):
        command = [executable(self.bundle)]
        if os.getuid() == 0:
            command = [*WITHOUT_PRIVILEGES, *command]
        program = self.desktop.run(*command)
        self.assertEqual(([], [f"Fatal error: {self.information}: {reason}"]), (program.output, program.errors))
        self.assertEqual(-signal.SIGABRT, program.status)

    def write(self, **changes):
        contents = plistlib.loads(self.information.read_bytes())
        for key, value in changes.items():
            contents[key] = value
        self.information.write_bytes(plistlib.dumps(contents))

    def expect_stop_for_build(self, build):
        self.write(CFBundleVersion=build)
        self.expect_stop("CFBundleVersion is not a decimal integer of at most 64 bits")

    def test_without_information(self):
        self.information.unlink()
        self.expect_stop("there is no such file")

    def test_with_information_that_may_not_be_read(self):
        self.information.chmod(0)
        self.expect_stop("it cannot be read: Permission denied")

    def test_with_information_that_is_no_property_list(self):
        self.information.write_text("build 2105\n")
        self.expect_stop("it is no property list")

    def test_with_a_folder_for_information(self):
        self.information.unlink()
        self.information.mkdir()
        self.expect_stop("it is no file")

    def test_without_a_build(self):
        contents = plistlib.loads(self.information.read_bytes())
        del contents["CFBundleVersion"]
        self.information.write_bytes(plistlib.dumps(contents))
        self.expect_stop("CFBundleVersion is missing")

    def test_with_a_number_for_a_build(self):
        self.write(CFBundleVersion=2105)
        self.expect_stop("CFBundleVersion is not a text")

    def test_with_a_dotted_build(self):
        self.expect_stop_for_build("2.1.5")

    def test_with_a_build_that_is_too_large(self):
        self.expect_stop_for_build("9223372036854775808")

    def test_with_an_empty_build(self):
        self.expect_stop_for_build("")

    def test_with_a_name_that_has_a_line_break_stops_with_one_line_all_the_same(self):
        broken = self.desktop.folder / "two\nlines" / BUNDLE.name
        shutil.copytree(self.bundle, broken)
        (broken / "Contents/Info.plist").unlink()
        program = self.desktop.run(executable(broken))
        self.assertEqual(1, len(program.errors))


class ABundleElsewhere(DesktopTest):
    def test_shows_its_window_from_a_folder_with_spaces_and_marks(self):
        bundle = self.desktop.folder / "ein Ordner, größer & \"anders\"" / BUNDLE.name
        shutil.copytree(BUNDLE, bundle)
        application = self.open_application([executable(bundle)])
        application.wait_for_state("Camera Driver", "Not installed")


if __name__ == "__main__":
    unittest.main()
