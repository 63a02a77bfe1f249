import json
import os
import pathlib
import plistlib
import re
import shlex
import shutil
import tempfile
import unittest

import support

# What it takes to configure for a Mac on another system. There is nothing in the system's folder, so nothing is built.
CROSS = {
    "CMAKE_SYSTEM_NAME": "Darwin",
    "CMAKE_C_COMPILER": shutil.which("clang"),
    "CMAKE_CXX_COMPILER": shutil.which("clang++"),
    "CMAKE_OBJCXX_COMPILER": shutil.which("clang++"),
    "CMAKE_INSTALL_NAME_TOOL": "/usr/bin/true",
    "CMAKE_TRY_COMPILE_TARGET_TYPE": "STATIC_LIBRARY",
    "CMAKE_FIND_ROOT_PATH": "/nowhere",
    "CMAKE_DISABLE_FIND_PACKAGE_GTest": "ON",
    "FETCHCONTENT_SOURCE_DIR_GOOGLETEST": "/usr/src/googletest",
}


class ConfiguredForAMac(unittest.TestCase):
    """A build tree for a Mac that all the tests of the class look at."""

    @classmethod
    def setUpClass(cls):
        place = tempfile.TemporaryDirectory()
        cls.addClassCleanup(place.cleanup)
        cls.place = pathlib.Path(place.name)
        cls.build = cls.place / "build"
        cls.contents = cls.build / "Driver Manager.app/Contents"
        (cls.place / "MacOSX.sdk").mkdir()

    @classmethod
    def configure(cls, preset, **values):
        given = {**CROSS, "CMAKE_OSX_SYSROOT": cls.place / "MacOSX.sdk", **values}
        definitions = [f"-D{key}={value}" for key, value in given.items()]
        command = ["cmake", "--preset", preset, "-S", support.ROOT, "-B", cls.build, *definitions]
        variables = {key: value for key, value in os.environ.items() if not key.startswith(("CMAKE", "LDFLAGS"))}
        return support.run(*command, cwd=support.ROOT, env=variables)

    def setUp(self):
        self.assertEqual(self.configured.returncode, 0, self.configured.stderr)

    def files(self, folder):
        return {str(file.relative_to(folder)) for file in folder.rglob("*")}

    def text(self, file):
        return (self.build / file).read_text()


class TheWorkflow(ConfiguredForAMac):
    """Its steps up to the dry run, on a build for a Mac that holds all but what is compiled."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.placed = cls.run_step("tests/packaging/placeholders")
        configuration = [word for word in cls.step("cmake --preset ship") if "=" in word]
        cls.configured = cls.configure("ship", **dict(word.split("=", 1) for word in configuration))
        cls.link = (cls.build / "app/CMakeFiles/driver_manager.dir/link.txt").read_text()
        cls.info = plistlib.loads((cls.contents / "Info.plist").read_bytes())

    @classmethod
    def step(cls, beginning):
        """The words of the command that begins so, with the placeholders in a folder of the test's own."""
        text = re.sub(r"\\\n", " ", (support.ROOT / ".github/workflows/build.yml").read_text())
        [command] = re.findall(rf"^ *(?:- run: )?({re.escape(beginning)}\b.*)$", text, re.MULTILINE)
        placeholders = str(cls.place / "placeholders")
        return [re.sub(r"(\$PWD/)?build/placeholders", placeholders, word) for word in shlex.split(command)]

    @classmethod
    def run_step(cls, beginning, *arguments):
        return support.run(*cls.step(beginning), *arguments, cwd=support.ROOT)

    def test_passes_a_dry_run(self):
        answer = self.run_step("packaging/macos/ship", self.build)
        self.assertEqual((answer.returncode, answer.stderr), (0, ""))

    def test_makes_a_bundle_with_files_for_a_mac_and_none_for_linux(self):
        rendered = {file.name for file in (support.ROOT / "assets/icons/rendered").iterdir()}
        self.assertEqual(self.files(self.contents / "Resources"), rendered)
        self.assertIn(f"{self.info['CFBundleIconFile']}.icns", rendered)

    def test_makes_a_bundle_with_the_given_extensions(self):
        given = self.files(self.place / "placeholders/extensions")
        self.assertEqual(self.files(self.contents / "Library/SystemExtensions"), given)

    def test_builds_for_both_architectures_and_the_oldest_system_of_the_bundle(self):
        self.assertIn("-arch arm64 -arch x86_64", self.link)
        self.assertIn(f"-mmacosx-version-min={self.info['LSMinimumSystemVersion']} ", self.link)

    def test_links_the_application_only_with_the_system_and_itself(self):
        self.assertEqual(re.findall(r"(?:^| )-l\S+", self.link), [])
        self.assertEqual(set(re.findall(r"-framework (\w+)", self.link)), {"AppKit", "Foundation", "SystemExtensions"})
        for library in re.findall(r"\S+\.(?:a|dylib|tbd)\b", self.link):
            with self.subTest(library):
                self.assertIn(self.build.resolve(), (self.build / "app" / library).resolve().parents)


class TheTestsForAMac(ConfiguredForAMac):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.configured = cls.configure("dev", CMAKE_UNITY_BUILD="OFF")

    def test_are_configured_with_a_googletest_of_their_own(self):
        for program in ("tests/model/CMakeFiles/model_tests.dir", "tests/views/CMakeFiles/views_tests.dir"):
            with self.subTest(program):
                self.assertTrue((self.build / program).is_dir())

    def test_include_those_of_its_own_sources_that_need_no_stand_in(self):
        folder = support.ROOT / "tests/platform/macos/services"
        window = support.ROOT / "tests/platform/macos/window/Unshown_test.mm"
        played = {file for file in folder.glob("*_test.*") if "tests/macos/gnustep/" in file.read_text()}
        wanted = {*folder.glob("*_test.*"), window, support.ROOT / "tests/platform/text/Text_test.cpp"} - played
        self.assertGreater(len(wanted), 3)
        commands = json.loads(self.text("compile_commands.json"))
        compiled = {
            pathlib.Path(command["file"]) for command in commands if "_tests_fake.dir" not in command["command"]
        }
        self.assertEqual(wanted - compiled, set())

    def test_come_with_a_bundle_without_sample_extensions(self):
        self.assertFalse((self.contents / "Library").exists())


class ThePresets(unittest.TestCase):
    def test_instrument_the_code_in_both_languages(self):
        presets = json.loads((support.ROOT / "CMakePresets.json").read_text())["configurePresets"]
        all_variables = [preset.get("cacheVariables", {}) for preset in presets]
        sanitizing = [of for of in all_variables if "-fsanitize" in of.get("CMAKE_CXX_FLAGS_DEBUG", "")]
        self.assertTrue(sanitizing)
        for variables in sanitizing:
            self.assertEqual(variables.get("CMAKE_OBJCXX_FLAGS_DEBUG"), variables["CMAKE_CXX_FLAGS_DEBUG"])
