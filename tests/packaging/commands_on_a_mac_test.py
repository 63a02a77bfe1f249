import os
import shutil

import support

CALLED = '#!/bin/sh\necho "$(basename "$0") $*" >>"$CALLS"\n'
APPLICATION = "build/release/Driver Manager.app/Contents/MacOS/Driver Manager"


class OnAMac(support.WithFolder):
    """The two commands, with tools that write down how they are called, on a machine that says that it is a Mac."""

    def setUp(self):
        super().setUp()
        self.root = self.place / "tree"
        self.bin = self.place / "bin"
        self.log = self.place / "calls"
        (self.root / "tools").mkdir(parents=True)
        for file in ("run", "test", "tools/build", "tools/install-packages", "tools/packages.txt", "CMakePresets.json"):
            shutil.copy(support.ROOT / file, self.root / file)
        self.bin.mkdir()
        self.give("uname", "#!/bin/sh\necho Darwin\n")
        for tool in ("xcode-select", "cmake", "make", "ctest"):
            self.give(tool, CALLED)
        self.make(APPLICATION)

    def give(self, tool, text):
        (self.bin / tool).write_text(text)
        (self.bin / tool).chmod(0o755)

    def make(self, program):
        (self.root / program).parent.mkdir(parents=True)
        (self.root / program).write_text(CALLED)
        (self.root / program).chmod(0o755)

    def start(self, *command):
        """Runs a command with the tools that were given, and those of every Unix, alone."""
        for tool in ("bash", "sh", "cat", "dirname", "basename", "getconf", "touch", "sed", "awk", "rm", "mkdir"):
            if not (self.bin / tool).exists():
                (self.bin / tool).symlink_to(shutil.which(tool))
        variables = {**os.environ, "PATH": str(self.bin), "CALLS": str(self.log)}
        return support.run(*command, cwd=self.root, env=variables)

    def calls(self):
        return self.log.read_text().splitlines() if self.log.exists() else []

    def processors(self):
        return os.sysconf("SC_NPROCESSORS_ONLN")


class TheRunCommand(OnAMac):
    def test_builds_with_make_and_starts_only_the_application(self):
        self.assertEqual(self.start("./run").returncode, 0)
        expected = [
            "xcode-select --print-path",
            "cmake --fresh --preset release -G Unix Makefiles",
            f"make --no-print-directory -C build/release -j {self.processors()}",
            "Driver Manager ",
        ]
        self.assertEqual(self.calls(), expected)

    def test_refuses_to_reset_a_simulated_mac(self):
        answer = self.start("./run", "--fresh")
        line = "run: --fresh resets the simulated Mac; this is a real Mac\n"
        self.assertEqual((answer.returncode, answer.stderr, self.calls()), (2, line, []))

    def test_starts_nothing_if_the_build_fails(self):
        self.give("make", "#!/bin/sh\nexit 2\n")
        answer = self.start("./run")
        self.assertEqual((answer.returncode, answer.stderr), (1, "run: the build failed\n"))
        self.assertNotIn("Driver Manager ", self.calls())

    def test_does_not_configure_a_configured_build_again(self):
        self.start("./run")
        (self.root / "build/release/Makefile").touch()
        self.log.unlink()
        self.start("./run")
        self.assertNotIn("cmake", " ".join(self.calls()))


class TheTestCommand(OnAMac):
    def test_builds_and_runs_the_tests(self):
        (self.root / "build/dev").mkdir()
        self.assertEqual(self.start("./test", "-R", "Banner").returncode, 0)
        self.assertEqual(self.calls()[1], "cmake --fresh --preset dev -G Unix Makefiles")
        self.assertRegex(self.calls()[3], rf"^ctest --preset dev --parallel {self.processors()} .* -R Banner$")

    def test_runs_all_checks_that_a_mac_has(self):
        for preset in ("dev", "asan"):
            (self.root / "build" / preset).mkdir()
        self.assertEqual(self.start("./test", "--all").returncode, 0)
        presets = [call.split()[2] for call in self.calls() if call.startswith("ctest")]
        self.assertEqual(presets, ["dev", "asan"])


class WhatAMacNeeds(OnAMac):
    def test_is_reported_for_the_command_line_tools(self):
        self.give("xcode-select", "#!/bin/sh\nexit 2\n")
        line = "install-packages: Apple's command line tools are missing: xcode-select --install\n"
        self.assert_stops(line)

    def test_is_reported_for_cmake(self):
        (self.bin / "cmake").unlink()
        self.assert_stops("install-packages: CMake is missing: get it from cmake.org and add it to the PATH\n")

    def assert_stops(self, line):
        for command in ("./run", "./test"):
            answer = self.start(command)
            self.assertEqual((answer.returncode, answer.stderr), (1, line))


class ALook(OnAMac):
    """What the workflow keeps of the first start, with stand-ins for the tools that look."""

    def look(self, application):
        (self.root / ".ci").mkdir()
        shutil.copy(support.ROOT / ".ci/look-on-a-mac", self.root / ".ci")
        (self.root / APPLICATION).write_text(f"#!/bin/sh\necho started\n{application}\n")
        self.give("screencapture", '#!/bin/sh\necho picture >"$2"\n')
        self.give("log", "#!/bin/sh\necho line\n")
        self.give("sleep", "#!/bin/sh\nuntil [ -s look/output.txt ]; do :; done\n")
        return self.start(".ci/look-on-a-mac", "look")

    def test_keeps_a_picture_and_the_log_and_ends_the_application(self):
        self.assertEqual(self.look("while :; do :; done").returncode, 0)
        kept = {file.name: file.read_text() for file in (self.root / "look").iterdir()}
        self.assertEqual(kept, {"log.txt": "line\n", "output.txt": "started\n", "screen.png": "picture\n"})

    def test_fails_if_the_application_ends_by_itself(self):
        answer = self.look("exit 1")
        self.assertEqual(answer.returncode, 1)
        self.assertIn("the application ended by itself", answer.stderr)


class TheCrossCheck(OnAMac):
    """On Linux, with stand-ins for its compiler."""

    def check(self, *arguments):
        shutil.copy(support.ROOT / "tools/cross-check", self.root / "tools")
        for folder in ("app", "views", "model", "platform/ui", "platform/posix", "platform/macos", "simulator/core"):
            (self.root / folder).mkdir(parents=True)
        (self.root / "platform/Log.cpp").touch()
        for tool in ("find", "mktemp", "sort", "wc", "xargs"):
            (self.bin / tool).symlink_to(shutil.which(tool))
        return self.start("tools/cross-check", *arguments)

    def test_says_that_nothing_was_checked_without_a_compiler(self):
        answer = self.check()
        self.assertEqual((answer.returncode, answer.stdout), (77, ""))
        self.assertIn("skipped, nothing was checked", answer.stderr)

    def test_compiles_each_source_for_both_architectures(self):
        self.give("zig", CALLED)
        self.assertEqual(self.check().returncode, 0)
        self.assertEqual([call.split()[3] for call in self.calls()], ["aarch64-macos.12.0", "x86_64-macos.12.0"])

    def test_fails_if_the_compiler_does(self):
        self.give("zig", "#!/bin/sh\nexit 1\n")
        self.assertEqual(self.check().returncode, 1)
