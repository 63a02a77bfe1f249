"""./test, in a small source tree whose tests are scripts."""

import json
import os
import shutil
import tempfile
import unittest
from pathlib import Path

from program import Program

ROOT = Path(__file__).resolve().parents[2]
PRESETS = ("dev", "libcxx", "asan", "release")

PROJECT = """cmake_minimum_required(VERSION 3.25)
project(small LANGUAGES NONE)
include(CTest)
add_test(NAME "area: AThing goes well" COMMAND true)
add_test(NAME "area: AThing <has> a \\"name\\" & says why" COMMAND sh -c "{script}")
"""


def preset(name):
    return {"name": name, "generator": "Ninja", "binaryDir": "${sourceDir}/build/${presetName}"}


class AllTests(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory(prefix="driver-manager-")
        self.addCleanup(temporary.cleanup)
        self.root = Path(temporary.name)
        shutil.copy(ROOT / "test", self.root)
        shutil.copytree(ROOT / "tools", self.root / "tools")
        tests = [{"name": name, "configurePreset": name} for name in PRESETS]
        presets = {"version": 6, "configurePresets": [preset(name) for name in PRESETS], "testPresets": tests}
        (self.root / "CMakePresets.json").write_text(json.dumps(presets))

    def run_tests(self, script, tidy="exit 0"):
        (self.root / "CMakeLists.txt").write_text(PROJECT.format(script=script))
        (self.root / "tools/tidy").write_text(f"#!/bin/sh\n{tidy}\n")
        program = Program([self.root / "test", "--all"], dict(os.environ), folder="/")
        self.addCleanup(program.end)
        status = program.wait_for_end()
        program.wait_for_last_line()
        return status, program

    def test_end_with_the_counts(self):
        status, program = self.run_tests("exit 0")
        self.assertEqual((0, f"{2 * len(PRESETS)} passed, 0 failed, 0 skipped"), (status, program.output[-1]))

    def test_end_with_the_output_of_each_failed_test(self):
        status, program = self.run_tests("case $PWD in */dev) echo it is dev; exit 1; esac")
        self.assertEqual(1, status)
        self.assertEqual("test: failed in dev", program.errors[-1])
        self.assertEqual(f"{2 * len(PRESETS) - 1} passed, 1 failed, 0 skipped", program.output[-1])
        self.assertEqual(
            ['-- dev: area: AThing <has> a "name" & says why', "   it is dev"],
            [line for line in program.output[-4:-1] if line.strip()],
        )

    def test_fail_if_clang_tidy_complains(self):
        status, program = self.run_tests("exit 0", tidy="exit 1")
        self.assertEqual((1, "test: failed in tidy"), (status, program.errors[-1]))


if __name__ == "__main__":
    unittest.main()
