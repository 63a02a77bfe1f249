"""The simulator as it is installed, in a folder with a blank in its path: its programs, its completion, its example."""

import os
import pathlib
import subprocess
import tempfile
import unittest

BUILD = os.environ["DRIVER_MANAGER_BUILD"]


def run(*command, **variables):
    """The exit status of a program, and what it printed; of one that failed, what it complained about, too."""
    environment = {**os.environ, "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent", **variables}
    outcome = subprocess.run(command, capture_output=True, text=True, env=environment, stdin=subprocess.DEVNULL)
    return outcome.returncode, outcome.stdout + (outcome.stderr if outcome.returncode else "")


def install(prefix, **variables):
    status, text = run("cmake", "--install", BUILD, "--component", "simulator", "--prefix", prefix, **variables)
    assert status == 0, text


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="an installation ")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        cls.prefix = cls.folder / "usr"
        cls.pages = cls.prefix / "share/doc/kelvra-simulator"
        install(cls.prefix)

    def assert_done(self, outcome):
        self.assertEqual(0, outcome[0], outcome[1])
        return outcome[1]

    def command(self, name):
        return self.prefix / "bin" / name


class TheInstalledPrograms(Installed):
    def test_play_a_scenario_on_a_bus_with_one_another(self):
        scenario = self.pages / "simulator/scenarios/denied.scenario"
        self.assertIn("all as expected", self.assert_done(run(self.command("sysextctl"), "play", "--bus", scenario)))

    def test_are_started_by_a_session_bus(self):
        answer = run(
            *("dbus-run-session", "--", self.command("sysextctl"), "list"),
            XDG_DATA_DIRS=self.prefix / "share",
            XDG_STATE_HOME=self.folder,
            XDG_RUNTIME_DIR=self.folder,
        )
        self.assertEqual("0 extension(s)\n", self.assert_done(answer))

    def test_do_not_depend_on_where_a_package_is_put_together(self):
        install("/usr", DESTDIR=self.folder / "package")
        services = self.folder / "package/usr/share/dbus-1/services"
        self.assertEqual(
            '[D-BUS Service]\nName=com.kelvra.Simulator1\nExec="/usr/libexec/kelvra-simulator/sysextd"\n',
            (services / "com.kelvra.Simulator1.service").read_text(),
        )
        self.assertTrue((self.folder / "package/usr/bin/kelvra-system-settings").exists())

    def test_explain_themselves_and_reject_what_they_do_not_know(self):
        programs = self.prefix / "libexec/kelvra-simulator"
        for program in ("seal", "submit", "sysextctl"):
            self.assertIn(f"usage: {program}", self.assert_done(run(programs / program, "--help")))
            self.assertEqual(2, run(programs / program, "--frobnicate")[0])
        self.assertEqual(2, run(programs / "seal", "/")[0])
        self.assertEqual((1, "seal: /: not a bundle\n"), run(programs / "seal", "/", "--team", "T"))
        self.assertEqual((1, "submit: there is no session bus\n"), run(programs / "submit"))


class TheInstalledExample(Installed):
    def test_is_built_sealed_and_played_as_its_page_says(self):
        example = self.pages / "examples/another-application"
        build = self.folder / "build"
        path = f"{self.prefix / 'bin'}:{os.environ['PATH']}"
        self.assert_done(run("cmake", "-S", example, "-B", build, PATH=path))
        self.assert_done(run("cmake", "--build", build, PATH=path))
        answer = run(
            *("sysextctl", "play", "--tap", *sorted(example.glob("*.scenario"))),
            *("--", build / "Meter.app/Contents/MacOS/meter"),
            PATH=path,
        )
        self.assert_done(answer)
        self.assertEqual(3, answer[1].count("\nok "))


# Completes what follows the name of the program; its last word is the one at the cursor.
COMPLETE = """
source "$1"
COMP_WORDS=("${@:2}") COMP_CWORD=$(($# - 2))
_sysextctl "$2" "${!#}" "${COMP_WORDS[COMP_CWORD - 1]}"
echo "${COMPREPLY[*]}"
"""


class TheCompletion(Installed):
    def completed(self, *words, before=(), **variables):
        file = self.prefix / "share/bash-completion/completions/sysextctl"
        program = self.command("sysextctl")
        answer = run(*before, "bash", "-c", COMPLETE, "complete", file, program, *words, **variables)
        return self.assert_done(answer).split()

    def test_knows_every_verb_of_the_help(self):
        verbs = self.completed("")
        self.assertLessEqual({"list", "requests", "wait", "allow", "switch", "fault", "play", "--help"}, set(verbs))
        self.assertNotIn("sysextctl", verbs)
        self.assertEqual(["switch"], self.completed("sw"))
        self.assertEqual(["fault"], self.completed("help", "fau"))
        self.assertEqual([], self.completed("frobnicate", ""))

    def test_knows_what_may_follow_a_verb(self):
        for words, expected in {
            ("list", "--"): "--json --help",
            ("list", "--json", "c"): "cmio",
            ("switch", "d"): "denial driver",
            ("switch", "denial", ""): "error silence",
            ("fault", ""): "next list clear",
            ("fault", "list", ""): "",
            ("fault", "next", ""): "activate deactivate properties any",
            ("fault", "next", "any", ""): "after silent hollow noprompt crash",
            ("developer", ""): "on off",
            ("wait", "x", "a"): "absent",
            ("wait", "x", "en"): "enabled",
            ("wait", "x", "--timeout", ""): "",
            ("install", "x", "1", "2", "d"): "disabled",
            ("allow", ""): "",
        }.items():
            self.assertEqual(expected.split(), self.completed(*words), words)

    def test_knows_the_extensions_of_the_running_mac(self):
        script = '"$0" applications "$1" && "$0" install com.example.meter.driver 1 1 && exec "${@:2}"'
        folder = self.pages / "examples/another-application"
        before = ("dbus-run-session", "--", "bash", "-c", script, self.command("sysextctl"), folder)
        answer = self.completed(
            *("allow", "com"),
            before=before,
            XDG_DATA_DIRS=self.prefix / "share",
            XDG_STATE_HOME=self.folder,
            XDG_RUNTIME_DIR=self.folder,
        )
        self.assertEqual(["com.example.meter.driver"], answer)


if __name__ == "__main__":
    unittest.main()
