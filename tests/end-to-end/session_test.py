import os
import select
import signal
import socket
import unittest
from pathlib import Path
from types import SimpleNamespace

import screen
from application import ALL_SET, NOT_INSTALLED, NOTHING_INSTALLED, TITLE, Cards
from bus import SERVICE
from case import CAMERA, NETWORK, SETTINGS, DesktopTest
from desktop import BUILD
from events import LIMIT, wait_until
from program import Program

SESSION = Path(__file__).resolve().parents[2] / "tools/session"
MAC = SESSION.parents[1] / "mac"
NO_BUS = {"DBUS_SESSION_BUS_ADDRESS": "", "XDG_RUNTIME_DIR": ""}


class Session(Program):
    """A running session, with every process started since on the same desktop."""

    def __init__(self, command, environment, **options):
        self.desktop = f"XDG_CONFIG_HOME={environment['XDG_CONFIG_HOME']}".encode()
        self.others = set(self.everybody())
        super().__init__(command, environment, process_group=0, **options)

    def everybody(self):
        """The names of all processes of that desktop, by process id."""
        found = {}
        for entry in Path("/proc").glob("[0-9]*"):
            try:
                if self.desktop in (entry / "environ").read_bytes().split(b"\0"):
                    found[int(entry.name)] = (entry / "comm").read_text().strip()
            except OSError:
                pass
        return found

    def processes(self):
        """Those that started after the session."""
        return {number: name for number, name in self.everybody().items() if number not in {*self.others, self.pid}}

    def number_of(self, name):
        """The process id of the program with this name, or None."""
        return next((number for number, found in self.processes().items() if found == name), None)

    def interrupt(self):
        """Does what Ctrl-C does: signals every process in the foreground."""
        os.killpg(self.pid, signal.SIGINT)


class SessionTest(DesktopTest):
    def setUp(self):
        super().setUp()
        screen.listen()  # assistive technology runs before the session starts

    def open_session(self, *options, environment=(), build=BUILD):
        self.session = self.desktop.start([SESSION, build, *options], environment, program=Session)
        self.addCleanup(self.end_leftovers)
        self.session.wait_for_line("Ctrl-C")
        for title in (SETTINGS, TITLE):
            wait_until(lambda: self.desktop.display.windows(title), lambda: f"{title!r} opens\n{self.session.said()}")
        return self.session

    def expect_mac(self, folder):
        """Expects the service's store and the session's lock in this folder."""
        self.assertTrue((folder / "kelvra-simulator/store.sqlite").exists())
        self.assertTrue((folder / "kelvra-simulator/session.lock").exists())

    def end_leftovers(self):
        self.session.end()
        for number in self.session.processes():
            os.kill(number, signal.SIGKILL)

    def interrupt(self):
        """Ends the session with Ctrl-C."""
        self.session.interrupt()
        self.expect_end(130)

    def expect_end(self, status):
        """Expects that the session ends and leaves no process behind."""
        self.assertEqual(status, self.session.wait_for_end())
        self.session.wait_for_last_line()
        self.assertEqual({}, self.session.processes())
        self.assertEqual([], self.session.errors)


class ASessionThatCannotStart(SessionTest):
    def test_says_why_in_one_line(self):
        store = "/dev/null/.local/state/kelvra-simulator"
        for complaint, environment in (
            ("there is no HOME to keep the simulated Mac in", {"HOME": "", "XDG_STATE_HOME": ""}),
            (f"the simulated Mac cannot be kept in {store}", {"HOME": "/dev/null", "XDG_STATE_HOME": "relative"}),
            ("the display :99999 does not answer", {"DISPLAY": ":99999"}),
        ):
            session = self.desktop.start([SESSION, BUILD], NO_BUS | environment)
            self.assertEqual(1, session.wait_for_end())
            session.wait_for_last_line()
            self.assertEqual(([f"session: {complaint}"], []), (session.errors, session.output))

    def test_waits_for_a_silent_display_until_ctrl_c(self):
        with socket.create_server(("127.0.0.1", 0)) as server:
            display = f"127.0.0.1:{server.getsockname()[1] - 6000}"
            session = self.desktop.start([SESSION, BUILD], {**NO_BUS, "DISPLAY": display}, program=Session)
            session.wait_for_line("does not answer; still waiting", session.errors)
            session.interrupt()
            self.assertEqual(130, session.wait_for_end())


class ASessionWithItsOwnBus(SessionTest):
    def open_session(self, *options, environment=(), build=BUILD):
        return super().open_session(*options, environment=NO_BUS | dict(environment), build=build)

    def test_runs_a_bus_the_service_and_the_two_windows_side_by_side(self):
        names = set(self.open_session().processes().values())
        self.assertLessEqual({TITLE, "SystemSettings", "sysextd", "dbus-daemon"}, names)
        left, _, _, _ = self.desktop.display.place_of(SETTINGS)
        _, _, right, _ = self.desktop.display.place_of(TITLE)
        self.assertLess(right, left)

    def test_ends_everything_that_it_started_on_sigterm(self):
        self.open_session().signal(signal.SIGTERM)
        self.expect_end(143)

    def test_ends_when_the_window_of_the_application_closes(self):
        self.open_session()
        self.desktop.display.close_window(TITLE)
        self.expect_end(0)

    def test_reports_the_exit_status_of_the_application(self):
        session = self.open_session()
        os.kill(session.number_of(TITLE), signal.SIGTERM)
        self.assertEqual(143, session.wait_for_end())
        session.wait_for_last_line()
        self.assertEqual(["session: the application ended with status 143"], session.errors)

    def test_is_controlled_from_another_terminal_wherever_its_build_is(self):
        place = self.desktop.folder / "user's build"
        place.symlink_to(BUILD)
        self.open_session(build=place)
        self.assertIn("0 extension(s)", self.play("list").output)
        self.assertIn("./mac", "".join(self.session.output))

    def test_cannot_be_controlled_after_its_end(self):
        self.open_session()
        self.interrupt()
        self.assertEqual(1, self.play("list").status)
        self.assertRegex(self.play("settings").errors[0], "^mac: no session is running")

    def play(self, *words):
        return self.desktop.run(MAC, *words)

    def test_continues_without_system_settings_and_can_open_it_again(self):
        self.open_session()
        self.desktop.display.close_window(SETTINGS)
        wait_until(lambda: not self.desktop.display.windows(SETTINGS), "the window of System Settings closes")
        self.assertTrue(self.desktop.display.windows(TITLE))
        self.assertEqual(0, self.play("settings").status)
        self.desktop.display.window(SETTINGS)
        self.desktop.display.close_window(TITLE)
        self.expect_end(0)

    def test_leaves_nothing_running_when_it_is_killed(self):
        self.open_session()
        watches = [os.pidfd_open(number) for number in self.session.processes()]
        self.session.signal(signal.SIGKILL)
        for watch in watches:
            self.assertTrue(select.select([watch], [], [], LIMIT)[0], "a process does not end")

    def test_is_the_only_one_on_its_mac(self):
        self.open_session()
        other = self.desktop.run(SESSION, BUILD)
        self.assertEqual(1, other.status)
        self.assertEqual(1, len(other.errors))
        self.assertRegex(other.errors[0], "^session: another session is running")

    def test_locks_the_mac_of_its_service_if_the_path_is_relative(self):
        home = self.desktop.folder / "home's"
        self.open_session(environment={"XDG_STATE_HOME": "relative", "HOME": str(home)})
        self.expect_mac(home / ".local/state")


class ASessionOnAnExistingBus(SessionTest):
    def setUp(self):
        super().setUp()
        self.addCleanup(self.desktop.bus.ask, "ReloadConfig")
        self.addCleanup(self.service_file().unlink, missing_ok=True)

    def sysextctl(self, *words):
        program = self.desktop.run(BUILD / "bin/sysextctl", *words)
        self.assertEqual(0, program.status, program.said())
        return program.output

    def cards(self):
        """The window of the current application."""
        number = wait_until(lambda: self.session.number_of(TITLE), "the application runs")
        return Cards(SimpleNamespace(pid=number, said=self.session.said))

    def service_file(self):
        return Path(self.desktop.environment["XDG_RUNTIME_DIR"], "dbus-1/services", f"{SERVICE}.service")

    def test_installs_the_service_and_removes_it_again(self):
        self.assertNotIn(SERVICE, self.desktop.bus.activatable())
        self.open_session()
        self.assertTrue(self.desktop.bus.has(SERVICE))
        self.assertTrue(self.service_file().exists())
        self.interrupt()
        self.assertFalse(self.desktop.bus.has(SERVICE))
        self.assertFalse(self.service_file().exists())
        self.assertNotIn(SERVICE, self.desktop.bus.activatable())

    def test_locks_the_mac_of_its_service_if_the_bus_has_another_path(self):
        folder = self.desktop.folder / "it's \\ another"
        self.open_session(environment={"XDG_STATE_HOME": str(folder)})
        self.expect_mac(folder)

    def test_does_not_replace_the_service_of_another_session(self):
        self.open_session()
        service = self.desktop.bus.process_of(SERVICE)
        self.assertEqual(1, self.desktop.run(SESSION, BUILD).status)
        self.open_session(environment={"XDG_STATE_HOME": str(self.desktop.folder / "other")})
        self.interrupt()
        self.assertEqual(service, self.desktop.bus.process_of(SERVICE))

    def test_ends_a_system_settings_that_was_opened_by_hand(self):
        self.open_session()
        os.kill(self.session.number_of("SystemSettings"), signal.SIGTERM)
        self.desktop.bus.wait_for_end_of(f"{SERVICE}.SystemSettings")
        self.desktop.start([BUILD / "bin/SystemSettings"]).wait_for_line("System Settings is open.")
        self.interrupt()

    def test_replaces_an_open_system_settings_by_one_that_reopens(self):
        opened_before = self.desktop.start([BUILD / "bin/SystemSettings"])
        opened_before.wait_for_line("System Settings is open.")
        self.open_session()
        opened_before.wait_for_end()
        self.desktop.display.close_window(SETTINGS)
        wait_until(lambda: not self.desktop.display.windows(SETTINGS), "the window of System Settings closes")
        self.sysextctl("install", CAMERA, "2.1", "2105", "waiting")
        self.desktop.display.window(SETTINGS)

    def test_restores_an_existing_service_file(self):
        another = "[D-BUS Service]\nName=com.kelvra.Simulator1\nExec=/bin/true\n"
        self.service_file().parent.mkdir(parents=True, exist_ok=True)
        self.service_file().write_text(another)
        self.open_session()
        self.assertNotEqual(another, self.service_file().read_text())
        self.interrupt()
        self.assertEqual(another, self.service_file().read_text())

    def test_keeps_what_is_installed_from_one_session_to_the_next(self):
        self.install_everything()
        self.open_session()
        self.cards().wait_for_banner(ALL_SET)

    def test_starts_with_a_reset_mac_on_request(self):
        self.install_everything()
        self.open_session("--fresh")
        self.assertEqual(["Developer mode is off"], self.sysextctl("developer"))
        self.sysextctl("install", NETWORK, "2.1", "2105")
        cards = self.cards()
        cards.choose("Refresh", "Network Driver")
        cards.wait_for_state("Network Driver", "Enabled")
        cards.wait_for_banner(NOTHING_INSTALLED)
        self.assertEqual(NOT_INSTALLED, cards.state("Camera Driver"))

    def install_everything(self):
        self.open_session()
        for identifier in (CAMERA, NETWORK):
            self.sysextctl("install", identifier, "2.1", "2105")
        self.sysextctl("developer", "on")
        self.interrupt()

    def test_lets_the_application_activate_its_extensions(self):
        self.open_session()
        cards = self.cards()
        cards.press("Activate", "Camera Driver")
        cards.wait_for_state("Camera Driver", "Await approval")

    def test_starts_the_application_again_when_the_mac_restarts(self):
        self.open_session()
        self.sysextctl("install", CAMERA, "2.1", "2105")
        before = self.session.processes()
        self.sysextctl("restart")
        for name in (TITLE, "SystemSettings"):
            wait_until(lambda: self.session.number_of(name) not in (None, *before), f"{name} starts again")
        self.cards().wait_for_state("Camera Driver", "Enabled")
        self.desktop.display.close_window(TITLE)
        self.expect_end(0)

    def test_ends_the_service_of_a_killed_session(self):
        self.open_session()
        left = self.desktop.bus.process_of(SERVICE)
        self.session.signal(signal.SIGKILL)
        self.session.wait_for_end()
        wait_until(lambda: not self.desktop.display.windows(TITLE), "the window goes")
        self.assertEqual(left, self.desktop.bus.process_of(SERVICE))
        self.open_session()
        self.assertNotEqual(left, self.desktop.bus.process_of(SERVICE))


if __name__ == "__main__":
    unittest.main()
