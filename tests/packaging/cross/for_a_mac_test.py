import json
import os
import pathlib
import plistlib
import re
import shlex
import shutil
import subprocess
import tempfile
import unittest

import extensions
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
    "FETCHCONTENT_SOURCE_DIR_GOOGLETEST": "/usr/src/googletest",
}


class ConfiguredForAMac(unittest.TestCase):
    preset = "ship"

    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.place = pathlib.Path(place.name)
        self.build = self.place / "build"
        self.contents = self.build / "Driver Manager.app/Contents"
        (self.place / "MacOSX.sdk").mkdir()

    def configure(self, **values):
        command = ["cmake", "--preset", self.preset, "-S", str(support.ROOT), "-B", str(self.build)]
        for key, value in {**CROSS, "CMAKE_OSX_SYSROOT": self.place / "MacOSX.sdk", **values}.items():
            command += ["-D", f"{key}={value}"]
        variables = {key: value for key, value in os.environ.items() if not key.startswith(("CMAKE", "LDFLAGS"))}
        answer = subprocess.run(
            command, cwd=support.ROOT, env=variables, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True
        )
        self.assertEqual(answer.returncode, 0, answer.stdout)

    def files(self, folder):
        return {str(file.relative_to(self.contents / folder)) for file in (self.contents / folder).rglob("*")}

    def text(self, file):
        return (self.build / file).read_text()


class ABundleForAMac(ConfiguredForAMac):
    def test_holds_what_a_mac_can_show_and_nothing_of_linux(self):
        self.configure()
        rendered = {file.name for file in (support.ROOT / "assets/icons/rendered").iterdir()}
        self.assertEqual(self.files("Resources"), rendered)
        info = plistlib.loads((self.contents / "Info.plist").read_bytes())
        self.assertIn(f"{info['CFBundleIconFile']}.icns", rendered)

    def test_holds_no_sample_of_an_extension(self):
        self.configure()
        self.assertFalse((self.contents / "Library").exists())

    def test_holds_the_extensions_that_it_is_given(self):
        folder = self.place / "extensions"
        extensions.make_all(folder)
        self.configure(DRIVER_MANAGER_EXTENSIONS=folder)
        there = {str(file.relative_to(folder)) for file in folder.rglob("*")}
        self.assertEqual(self.files("Library/SystemExtensions"), there)


class TheWorkflow(ConfiguredForAMac):
    """Its steps up to the dry run, on a build for a Mac that holds all but what is compiled."""

    def test_ends_its_dry_run_with_nothing_that_would_stop(self):
        self.run_here(self.step("tests/packaging/placeholders"))
        configuration = [word for word in self.step("cmake --preset ship") if "=" in word]
        self.configure(**dict(word.split("=", 1) for word in configuration))
        answer = self.run_here([*self.step("packaging/macos/ship"), str(self.build)])
        self.assertEqual((answer.returncode, answer.stderr), (0, ""))

    def step(self, beginning):
        """The words of the command that begins so, with the placeholders in a folder of the test's own."""
        workflow = (support.ROOT / ".github/workflows/build.yml").read_text()
        text = re.sub(r"\\\n", " ", workflow)
        commands = re.findall(rf"^ *(?:- run: )?({re.escape(beginning)}\b.*)$", text, re.MULTILINE)
        self.assertEqual(len(commands), 1, commands)
        words = shlex.split(commands[0])
        return [re.sub(r"(\$PWD/)?build/placeholders", str(self.place / "placeholders"), word) for word in words]

    def run_here(self, command):
        return subprocess.run(
            command, cwd=support.ROOT, stdout=subprocess.PIPE, stderr=subprocess.PIPE, universal_newlines=True
        )


class ThePresets(unittest.TestCase):
    def test_instrument_what_is_written_in_either_language(self):
        presets = json.loads((support.ROOT / "CMakePresets.json").read_text())["configurePresets"]
        all_variables = [preset.get("cacheVariables", {}) for preset in presets]
        sanitizing = [of for of in all_variables if "-fsanitize" in of.get("CMAKE_CXX_FLAGS_DEBUG", "")]
        self.assertTrue(sanitizing)
        for variables in sanitizing:
            self.assertEqual(variables.get("CMAKE_OBJCXX_FLAGS_DEBUG"), variables["CMAKE_CXX_FLAGS_DEBUG"])


class AnApplicationForAMac(ConfiguredForAMac):
    def test_runs_on_both_architectures_and_from_the_oldest_system_on_that_it_names(self):
        self.configure()
        info = plistlib.loads((self.contents / "Info.plist").read_bytes())
        link = self.text("app/CMakeFiles/driver_manager.dir/link.txt")
        self.assertIn("-arch arm64 -arch x86_64", link)
        self.assertIn(f"-mmacosx-version-min={info['LSMinimumSystemVersion']} ", link)

    def test_is_linked_with_nothing_but_the_system_and_itself(self):
        self.configure()
        link = self.text("app/CMakeFiles/driver_manager.dir/link.txt")
        self.assertEqual(re.findall(r"(?:^| )-l\S+", link), [])
        self.assertEqual(set(re.findall(r"-framework (\w+)", link)), {"AppKit", "Foundation", "SystemExtensions"})
        folder = self.build / "app"
        for library in re.findall(r"\S+\.(?:a|dylib|tbd)\b", link):
            with self.subTest(library):
                self.assertIn(self.build.resolve(), (folder / library).resolve().parents)


class TestsForAMac(ConfiguredForAMac):
    preset = "dev"

    def test_are_configured_with_a_googletest_of_their_own(self):
        self.configure(CMAKE_DISABLE_FIND_PACKAGE_GTest="ON")
        for program in ("tests/model/CMakeFiles/model_tests.dir", "tests/views/CMakeFiles/views_tests.dir"):
            with self.subTest(program):
                self.assertTrue((self.build / program).is_dir())

    def test_are_those_of_its_own_sources_too_that_need_no_part_to_be_played(self):
        self.configure()
        folder = support.ROOT / "tests/platform/macos/services"
        played = {file for file in folder.glob("*_test.*") if "ServicesTest.h" in file.read_text()}
        played.add(folder / "BundleWithoutList_test.mm")
        wanted = {*folder.glob("*_test.*"), support.ROOT / "tests/platform/text/Text_test.cpp"} - played
        self.assertGreater(len(wanted), 4)
        commands = json.loads(self.text("compile_commands.json"))
        compiled = {pathlib.Path(command["file"]) for command in commands if "_tests_fake.dir" not in command["command"]}
        self.assertEqual(wanted - compiled, set())


if __name__ == "__main__":
    unittest.main()
