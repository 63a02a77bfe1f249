"""./run, in a small source tree whose build is a script of the test."""

import os
import select
import shutil
import signal
import tempfile
import unittest
from pathlib import Path

from events import LIMIT, wait_until
from program import Program

ROOT = Path(__file__).resolve().parents[2]

PROJECT = """cmake_minimum_required(VERSION 3.25)
project(small LANGUAGES NONE)
add_custom_target(everything ALL COMMAND "{script}" VERBATIM)
"""

PRESETS = """{"version": 6, "configurePresets": [
{"name": "release", "generator": "Ninja", "binaryDir": "${sourceDir}/build/${presetName}"}]}
"""


class Tree(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory(prefix="driver-manager-")
        self.addCleanup(temporary.cleanup)
        self.root = Path(temporary.name) / "a tree, with spaces"
        self.bin = Path(temporary.name) / "bin"
        self.bin.mkdir()
        self.root.mkdir()
        for command in ("run", "test"):
            shutil.copy(ROOT / command, self.root)
        shutil.copytree(ROOT / "tools", self.root / "tools")
        (self.root / "CMakePresets.json").write_text(PRESETS)
        self.write_script("build", "exit 0")
        (self.root / "CMakeLists.txt").write_text(PROJECT.format(script=self.root / "build.sh"))

    def write_script(self, name, text):
        self.write(self.root / f"{name}.sh", text)

    def write_tool(self, name, text):
        """Writes a tool that the commands find before the system's."""
        self.write(self.bin / name, text)

    @staticmethod
    def write(script, text):
        script.write_text(f"#!/bin/sh\n{text}\n")
        script.chmod(0o755)

    def start(self, *options, command="run", **environment):
        kept = {name: value for name, value in os.environ.items() if name not in ("DISPLAY", "WAYLAND_DISPLAY")}
        kept["PATH"] = f"{self.bin}:{kept['PATH']}"
        program = Program([self.root / command, *options], kept | environment, folder="/", process_group=0)
        self.addCleanup(program.end)
        return program


class Run(Tree):
    def expect(self, program, status, *errors):
        self.assertEqual(status, program.wait_for_end(), program.said())
        program.wait_for_last_line()
        self.assertEqual(list(errors), program.errors)

    def test_prints_its_help(self):
        program = self.start("--help")
        self.expect(program, 0)
        self.assertIn("usage: ./run [--fresh]", program.output)

    def test_rejects_an_unknown_option_in_one_line(self):
        self.expect(self.start("--frsh"), 2, "run: unknown option --frsh; see ./run --help")

    def test_suggests_xvfb_before_it_builds_if_there_is_no_display(self):
        self.write_script("build", 'touch "${0%/*}/built"')
        self.expect(self.start(), 1, "run: there is no display; use: xvfb-run -a ./run")
        self.assertFalse((self.root / "built").exists())

    def test_starts_a_session_of_the_build(self):
        (self.root / "tools/session").write_text('#!/bin/bash\nprintf "<%s>" "$PWD" "$@"\n')
        program = self.start("--fresh", DISPLAY=":0")
        self.expect(program, 0)
        self.assertEqual(f"<{self.root}><build/release><--fresh>", program.output[-1])

    def test_fails_if_the_build_fails(self):
        self.write_script("build", "exit 1")
        self.expect(self.start(DISPLAY=":0"), 1, "run: the build failed")

    def test_builds_in_a_tree_that_was_moved(self):
        (self.root / "tools/session").write_text("#!/bin/bash\n")
        self.start(DISPLAY=":0").wait_for_end()
        moved = self.root.rename(self.root.with_name("moved"))
        (moved / "CMakeLists.txt").write_text(PROJECT.format(script=moved / "build.sh"))
        self.root = moved
        self.expect(self.start(DISPLAY=":0"), 0)

    def test_ends_the_build_on_ctrl_c(self):
        self.expect_end_of_build(lambda program: os.killpg(program.pid, signal.SIGINT), 130)

    def test_ends_the_build_on_sigterm(self):
        self.expect_end_of_build(lambda program: program.signal(signal.SIGTERM), 143)

    def test_ends_the_build_when_it_is_killed(self):
        self.expect_end_of_build(lambda program: program.signal(signal.SIGKILL), -signal.SIGKILL)

    def expect_end_of_build(self, end, status):
        """The build keeps a pipe open, which closes when the build ends."""
        pipe = self.root / "pipe"
        os.mkfifo(pipe)
        self.write_script("build", 'exec sleep 1000 >"${0%/*}/pipe"')
        program = self.start(DISPLAY=":0")
        with open(pipe, "rb", buffering=0) as reader:  # blocks until the build has opened it
            end(program)
            self.assertEqual(status, program.wait_for_end())
            self.assertTrue(select.select([reader], [], [], LIMIT)[0], "the build does not end")


class ThePackages(Tree):
    def setUp(self):
        super().setUp()
        (self.root / "tools/packages.txt").write_text("g++ # compiles\ngdb # tests: looks\ncmake # configures\n")

    def installed_by(self, command):
        """The packages that it installs on a machine that has only cmake."""
        self.write_tool("dpkg-query", "echo '<installed cmake><not-installed gdb>'")
        self.write_tool("sudo", '"$@"')
        self.write_tool("apt-get", f'echo "$*" >>"{self.root}/calls"')
        self.start(command=command).wait_for_end()
        return (self.root / "calls").read_text().splitlines()[-1].split("recommends ")[1]

    def test_include_those_of_the_tests_only_for_the_test_command(self):
        self.assertEqual(["g++", "g++ gdb"], [self.installed_by("run"), self.installed_by("test")])


class CtrlC(Tree):
    def test_ends_the_tool_that_the_script_waits_for(self):
        for tool in ("mkdir", "mkfifo", "flock"):
            self.expect_end(tool, 130, "/", command="tools/session", HOME=str(self.root), XDG_STATE_HOME="")
        self.expect_end("dpkg-query", -signal.SIGINT)

    def expect_end(self, tool, status, *options, **environment):
        self.write_tool(tool, "echo waits | tee /dev/stderr; exec sleep 1000")
        program = self.start(*options, **environment)
        wait_until(lambda: "waits" in program.output + program.errors, lambda: f"{tool} waits\n{program.said()}")
        os.killpg(program.pid, signal.SIGINT)
        self.assertEqual(status, program.wait_for_end())
        program.wait_for_last_line()
        (self.bin / tool).unlink()


class TheBuild(unittest.TestCase):
    """A second build of this tree."""

    def test_has_nothing_to_do_if_nothing_changed(self):
        ninja = Program(["ninja", "-C", os.environ["DRIVER_MANAGER_BUILD"]])
        self.addCleanup(ninja.end)
        self.assertEqual(0, ninja.wait_for_end())
        ninja.wait_for_last_line()
        self.assertEqual("ninja: no work to do.", ninja.output[-1], ninja.said())


if __name__ == "__main__":
    unittest.main()
