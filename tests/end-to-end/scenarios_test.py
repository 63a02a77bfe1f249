"""Scenarios of the simulator, played in the window: with presses for what the application does, and commands for the
rest. Tests without a window check what the scenarios expect of the Mac."""

import shlex
import unittest
from functools import partialmethod
from pathlib import Path

from application import ALL_SET, NOT_INSTALLED, NOTHING_INSTALLED, RESTARTED, TITLE
from case import BASE, CAMERA, NETWORK, MacTest
from desktop import BUILD
from program import Program

SCENARIOS = Path(__file__).resolve().parents[2] / "simulator/scenarios"
CARDS = {CAMERA: "Camera Driver", NETWORK: "Network Driver"}
FAILURES = {
    11: "Request was canceled.",
    12: "Superseded by request for same identifier.",
    13: "Authorization required.",
}


class Road(MacTest):
    """Plays a scenario. The base driver, which has no card, stays installed: the application prints a line about it
    at each refresh, after everything that it received before."""

    def play(self, name, banner=NOTHING_INSTALLED, camera=NOT_INSTALLED, network=NOT_INSTALLED):
        self.events = self.desktop.start([BUILD / "bin/sysextctl", "watch"], program=Program)
        self.events.wait_for_line("watching")
        self.application = None
        self.mac.does("install", BASE, "2.1", "2105")
        for line in (SCENARIOS / f"{name}.scenario").read_text().splitlines():
            self.take(line)
        self.expect_look(self.running(), banner, camera, network)
        self.assertEqual(list(CARDS.values()), self.application.cards())

    def take(self, line):
        verb, *words = shlex.split(line, comments=True) or [""]
        try:
            if own := getattr(self, f"do_{verb}", None):
                own(*words)
            elif verb:
                self.mac.does(verb, *words)
        except AssertionError as problem:
            raise AssertionError(f"{line}: {problem}") from None

    def running(self):
        if not self.application:
            self.application = self.open_application()
            self.looks = 1
        return self.application

    # What the application does ---------------------------------------------------------------------------------------

    def do_activate(self, identifier, *_):
        card, application = CARDS[identifier], self.running()
        title = application.screen.wait_for(lambda: application.action(card), f"{card} has a button")
        self.submit(f"{identifier}\tactivation submitted", lambda: application.press(title, card))
        self.expect_line(f"Sysex identifier {identifier}")

    def do_deactivate(self, identifier, *_):
        application = self.running()
        self.submit(f"{identifier}\tdeactivation submitted", lambda: application.choose("Remove", CARDS[identifier]))

    def submit(self, event, press):
        """Presses, and waits until the service has received the request."""
        press()
        self.events.wait_for_next(event)

    def do_properties(self, identifier):
        self.asked = identifier
        self.refresh()

    def refresh(self):
        self.running().choose("Refresh", "Camera Driver")
        self.looks += 1

    def do_quit(self, _):
        self.desktop.display.close_window(TITLE)
        self.end(0)

    def do_restart(self):
        self.mac.does("restart")
        if self.application:
            self.end(RESTARTED)

    def end(self, status):
        self.assertEqual(status, self.application.wait_for_end())
        self.application = None

    # What others do --------------------------------------------------------------------------------------------------

    def do_reset(self):
        self.mac.does("reset")
        self.mac.does("install", BASE, "2.1", "2105")

    def do_profile(self, file):
        self.mac.does("profile", file if file == "--remove" else SCENARIOS / file)

    # What it receives ------------------------------------------------------------------------------------------------

    def do_expect(self, what, *words):
        if check := getattr(self, f"expect_{what}", None):
            check(*words)

    def expect_line(self, pattern):
        """Expects this as the next line that the application logs."""
        self.assertRegex(self.application.next_line(self.application.errors), f"^{pattern}$")

    def expect_needs(self, *_):
        self.expect_line("Sysex request needs user approval.")
        self.looks += 1

    def expect_finished(self, result, *_):
        self.expect_line(f"Sysex request finished: {result}")
        self.looks += 1

    def expect_failed(self, code, *rest):
        if "domain" not in rest:  # the application ignores errors of other domains
            self.expect_line(rf"Sysex request failed: .+ \({FAILURES[int(code)]}\)")

    def expect_asked(self, to, replace, existing, by, replacement):
        self.expect_line(f"Sysex replacement request: <.+ {existing}> <.+ {replacement}>")

    def expect_found(self, *words):
        if words == ("none",):
            self.expect_nothing()
            self.assertEqual([], self.lines_about(self.asked))
            return
        conditions = {word.rstrip(",") for word in words[1::2]}
        flags = " ".join(str(flag in conditions).lower() for flag in ("enabled", "waiting", "uninstalling"))
        self.application.screen.wait_for(
            lambda: any(flags in line for line in self.lines_about(self.asked)[-1:]), f"it prints {flags}"
        )

    def expect_nothing(self):
        """Expects no other log lines. A refresh makes sure that the application has received everything."""
        self.refresh()
        self.application.screen.wait_for(lambda: len(self.lines_about(BASE)) == self.looks, f"{self.looks} looks")
        self.assertEqual([], self.application.lines_left(self.application.errors))

    def lines_about(self, identifier):
        return [line for line in self.application.output if line.startswith(f"{identifier} ")]


def playing(*scenario, **states):
    return partialmethod(Road.play, *scenario, **states)


class TheScenario(Road):
    test_of_the_plain_road = playing("plain-road")
    test_of_an_upgrade_that_takes_effect_at_the_restart = playing("upgrade-until-restart", network="Enabled")
    test_of_a_removal_that_waits_for_the_restart = playing("removal-until-restart")
    test_of_an_extension_that_is_switched_off_and_on = playing("disable-enable", camera="Enabled")
    test_of_waiting_over_a_restart = playing("waiting-over-a-restart", camera="Enabled")
    test_of_a_denial = playing("denied", camera="Enabled")
    test_of_several_dying_copies = playing("several-dying-copies", camera="Enabled")
    test_of_two_requests_at_once = playing("two-requests-at-once", camera="Enabled")
    test_of_two_extensions = playing("two-extensions", ALL_SET, camera="Enabled", network="Enabled")
    test_of_a_removal_that_is_refused = playing("removal-refused", camera="Uninstalling")
    test_of_a_profile_that_arrives = playing("profile-arrives", camera="Uninstalling")
    test_of_a_late_answer = playing("late-answer", camera="Enabled")
    test_of_an_error_of_another_domain = playing("foreign-error")


if __name__ == "__main__":
    unittest.main()
