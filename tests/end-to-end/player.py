"""Plays a scenario of the simulator through the application: what it activates is pressed, what it hears is read."""

import copy
import json
import re
import shlex
from pathlib import Path

from application import Application, executable
from bus import SERVICE
from disk import Disk
from events import wait_until
from expected import Copies, Record, banner
from mac import BASE, CAMERA, NETWORK, Mac

SCENARIOS = Path(__file__).resolve().parents[2] / "simulator/scenarios"
TITLE = "Driver Manager"
CARDS = {CAMERA: "Camera Driver", NETWORK: "Network Driver"}
MANAGED = (BASE, CAMERA, NETWORK)

NEEDS_APPROVAL = "Sysex request needs user approval."
UNKNOWN_ERROR = "An unknown error occurred."
FAILURES = {
    1: UNKNOWN_ERROR,
    2: "Missing a required entitlement.",
    3: "Unsupported parent bundle location.",
    4: "Extension not found.",
    5: "Missing extension identifier.",
    6: "Duplicate extension identifier.",
    7: "Unknown extension category.",
    8: "System extension signature is invalid.",
    9: "System extension validation failed.",
    10: "Activation forbidden by system policy.",
    11: "Request was canceled.",
    12: "Superseded by request for same identifier.",
    13: "Authorization required.",
}


def lines_of(text):
    """The lines of a scenario, each with its number and its words."""
    numbered = ((number, shlex.split(line, comments=True)) for number, line in enumerate(text.splitlines(), 1))
    return [(number, words) for number, words in numbered if words]


class Player:
    """Needs a desktop whose Mac has nothing installed. Whatever does not go as a line says is an AssertionError."""

    def __init__(self, desktop, program=Application):
        self.desktop = desktop
        self.program = program
        self.disk = Disk(desktop.folder)
        self.mac = Mac(desktop, self.disk.applications)
        self.application = None
        self.crashes = False
        self.events = []
        self.read = 0
        self.mac_copies = Copies()
        self.failure = None
        desktop.bus.connection.signal_subscribe(
            None, SERVICE + ".Control", "Event", None, None, 0, lambda *signal: self.events.append(signal[5].unpack())
        )

    def play(self, text):
        """Plays a scenario; the application runs when that is done."""
        for number, words in lines_of(text):
            try:
                self.take(*words)
            except AssertionError as problem:
                raise AssertionError(f"line {number}: {shlex.join(words)}: {problem}") from None
        self.open()

    def take(self, verb, *words):
        own = getattr(self, "do_" + verb.replace("-", "_"), None)
        if own:
            own(*words)
        else:
            self.mac.does(verb, *words)

    # The application -------------------------------------------------------------------------------------------------

    def open(self):
        """Starts the application if it does not run, and waits for what it asks at its start."""
        if self.application:
            return self.application
        self.take_answers(len(self.events))  # what was answered before was not for this one
        self.application = self.desktop.start([executable(self.disk.bundle)], program=self.program)
        self.records = {identifier: Record(identifier) for identifier in MANAGED}
        self.printed = self.logged = 0
        self.application.wait_for_state("Camera Driver", self.application.state("Camera Driver"))
        self.expect_enumeration()
        return self.application

    def expect_enumeration(self):
        """Waits until the application has asked after every extension once more, prints what it heard and shows it.
        Gives the diagnostic lines and, by their extensions, the log lines of the failures."""
        wait_until(lambda: self.end_of_look(), lambda: f"it asks what is there\n{self.said()}")
        lines, failures = [], {}
        for identifier, code, copies in self.take_answers(self.end_of_look()):
            if code is not None:
                failures[identifier] = self.expect_failure(code, ".*")
            elif copies:
                self.records[identifier].fold(copies)
                lines.append(self.expect_diagnostic_line(identifier))
        self.expect_look()
        return lines, failures

    def end_of_look(self):
        """Where the events end that bring the answers about every extension; nothing if they are not all there."""
        places = [place for place in range(self.read, len(self.events)) if answer_in(self.events[place])]
        return places[len(MANAGED) - 1] + 1 if len(places) >= len(MANAGED) else None

    def take_answers(self, end):
        """Each answer about an extension up to there: the code if it is a failure, and the copies that it tells of."""
        answers = []
        for event in self.events[self.read : end]:
            _, identifier, text = event
            self.mac_copies.hear(identifier, text)
            if answer := answer_in(event):
                code = int(answer[2]) if answer[1] == "failed" else None
                answers.append((identifier, code, self.mac_copies.reported(identifier)))
        self.read = end
        return answers

    def expect_diagnostic_line(self, identifier):
        wait_until(
            lambda: len(self.application.output) > self.printed, lambda: f"it prints what it heard\n{self.said()}"
        )
        line, expected = self.application.output[self.printed], self.records[identifier].diagnostic_line()
        self.printed += 1
        if line != expected:
            raise AssertionError(f"the application prints {line!r}, not {expected!r}")
        return line

    def expect_look(self):
        """Each card and the banner say what follows from the copies that were found."""
        for identifier, card in CARDS.items():
            self.application.wait_for_state(card, self.records[identifier].state)
        self.application.wait_for_banner(banner([self.records[identifier] for identifier in CARDS]))

    def next_log_line(self):
        wait_until(
            lambda: len(self.application.errors) > self.logged, lambda: f"the application hears of it\n{self.said()}"
        )
        self.logged += 1
        return self.application.errors[self.logged - 1]

    def expect_log(self, line):
        heard = self.next_log_line()
        if heard != line:
            raise AssertionError(f"the application logs {heard!r}, not {line!r}")

    def said(self):
        return self.application.said()

    def end(self):
        if self.application:
            self.expect_nothing()
            self.application = None

    # What it is told to do -------------------------------------------------------------------------------------------

    def do_activate(self, identifier, *called):
        self.check_playable(called)
        card = CARDS[identifier]
        self.open()
        open_requests = len(self.requests())
        title = "Upgrade" if self.application.has_button("Upgrade", card) else "Activate"
        if not self.application.has_button(title, card):
            raise AssertionError("the application offers no such button")
        self.submit("activation", identifier, lambda: self.application.press(title, card))
        self.expect_log(f"Sysex identifier {identifier}")
        self.expect_crash(open_requests)

    def do_deactivate(self, identifier, *called):
        self.check_playable(called)
        self.open()
        open_requests = len(self.requests())
        self.submit("deactivation", identifier, lambda: self.application.choose("Remove", CARDS[identifier]))
        self.expect_crash(open_requests)

    def do_properties(self, identifier, *called):
        self.check_playable(called)
        self.open()
        self.application.choose("Refresh", "Camera Driver")
        self.asked = identifier
        self.answer, failures = self.expect_enumeration()
        self.failure = failures.get(identifier)

    def submit(self, kind, identifier, press):
        """Presses, and waits until the service has the request."""
        seen = len(self.events)
        press()
        wanted = (identifier, f"{kind} submitted")
        wait_until(
            lambda: any(event[1:] == wanted for event in self.events[seen:]), lambda: f"it asks\n{self.said()}"
        )

    def check_playable(self, called):
        if called and called[0] != "called":
            raise AssertionError("the application cannot be told so")

    def expect_crash(self, open_requests):
        """The service dies as ordered; the application is told nothing, and says so for each request that was open."""
        if self.crashes:
            for _ in range(open_requests + 1):
                line = self.next_log_line()
                if not line.endswith(f"({UNKNOWN_ERROR})"):
                    raise AssertionError(f"the application logs {line!r}")
        self.crashes = False

    def do_quit(self, _):
        if self.application:
            self.desktop.display.close_window(TITLE)
            self.application.wait_for_end()
            self.end()

    def do_restart(self):
        self.mac.does("restart")
        if self.application:
            self.application.wait_for_end()
            self.end()

    def do_profile(self, file):
        self.mac.does("profile", file if file == "--remove" else SCENARIOS / file)

    def do_fault(self, *words):
        self.crashes = words[-1] == "crash"
        self.mac.does("fault", *words)

    # What is on the disk ---------------------------------------------------------------------------------------------

    def do_move(self, _, to, path):
        self.do_quit(TITLE)
        self.disk.move(path)

    def do_update(self, _, to, version):
        self.do_quit(TITLE)
        self.disk.update(version)

    def do_damage(self, file):
        self.do_quit(TITLE)
        self.disk.damage(file)

    def do_carry(self, file, version, *traits):
        self.do_quit(TITLE)
        self.disk.carry(file, version, *traits)

    def do_bundle(self, name, *rest):
        if name != TITLE:
            raise AssertionError("there is no such application here")
        self.do_quit(TITLE)
        self.disk.empty(*rest)

    # What is to be seen ----------------------------------------------------------------------------------------------

    def do_expect(self, what, *words):
        getattr(self, "expect_" + what)(*words)

    def expect_needs(self, approval, *to):
        self.expect_log(NEEDS_APPROVAL)
        self.expect_enumeration()

    def expect_finished(self, result, *to):
        self.expect_log(f"Sysex request finished: {result}")
        if result == "1":
            self.records[CAMERA].reboot = True  # the camera's, whichever extension was asked for
        self.expect_enumeration()

    def expect_asked(self, to, replace, existing, by, replacement):
        line = self.next_log_line()
        form = rf"Sysex replacement request: <(.*) {re.escape(existing)}> <\1 {re.escape(replacement)}>"
        if not re.fullmatch(form, line):
            raise AssertionError(f"the application logs {line!r}")

    def expect_failed(self, code, *rest):
        if "domain" in rest:
            return  # the application passes over errors of other domains; that it says nothing is found at the end
        description = "" if rest[:2] == ("without", "description") else rest[1] if rest[:1] == ("saying",) else None
        text = ".+" if description is None else re.escape(description)
        self.expect_failure(int(code), text, self.take_failure())

    def expect_failure(self, code, text, line=None):
        line = line or self.next_log_line()
        if not re.fullmatch(rf"Sysex request failed: {text} \({re.escape(FAILURES[code])}\)", line):
            raise AssertionError(f"the application logs {line!r}")
        return line

    def take_failure(self):
        """The line that told that the properties asked for last could not be had, unless a line expected it."""
        line, self.failure = self.failure, None
        return line

    def expect_found(self, *words):
        if self.failure:
            raise AssertionError(f"the application logs {self.failure!r}")
        lines = [line for line in self.answer if line.startswith(self.asked + " ")]
        if words[0] == "none":
            if lines:
                raise AssertionError(f"the application prints {lines}")
            return
        told = copy.copy(self.records[self.asked])
        told.fold([tuple(found.split(" ")) for found in " ".join(words).split(", ")])
        if lines != [told.diagnostic_line()]:
            raise AssertionError(f"the application prints {lines}")

    def expect_nothing(self):
        if self.failure:
            raise AssertionError(f"the application logs {self.take_failure()!r}")
        if self.application and self.application.status is None:
            self.application.choose("Refresh", "Camera Driver")
            self.expect_enumeration()
        elif self.application:
            self.application.wait_for_last_line()
        if self.application and self.application.errors[self.logged :]:
            raise AssertionError(f"the application logs {self.application.errors[self.logged:]}")

    def expect_copies(self, identifier, *words):
        expected = [] if words == ("none",) else " ".join(words).split(", ")
        if self.copies(identifier) != expected:
            raise AssertionError(f"there is {self.copies(identifier)}")

    def expect_copy(self, identifier, *words):
        if " ".join(words) not in self.copies(identifier):
            raise AssertionError(f"there is {self.copies(identifier)}")

    def expect_requests(self, count):
        if len(self.requests()) != (0 if count == "none" else int(count)):
            raise AssertionError(f"there is {self.requests()}")

    def expect_request(self, identifier, stage):
        if (identifier, stage) not in self.requests():
            raise AssertionError(f"there is {self.requests()}")

    def copies(self, identifier):
        copies = json.loads("\n".join(self.mac.says("list", "--json")))
        return [
            f"{copy['shortVersion']}/{copy['version']} {copy['state']}"
            for copy in copies
            if copy["identifier"] == identifier
        ]

    def requests(self):
        requests = json.loads("\n".join(self.mac.says("requests", "--json")))
        return [(request["identifier"], request["stage"]) for request in requests]


def answer_in(event):
    return re.fullmatch(r"properties (found|failed) (-?\d+)", event[2])
