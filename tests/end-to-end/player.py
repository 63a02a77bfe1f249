"""Plays a scenario of the simulator through the application: what it activates is pressed, what it hears is read."""

import copy
import json
import re
import shlex
from pathlib import Path

from application import TITLE, Application, executable
from bus import SERVICE
from disk import Disk
from events import wait_until
from expected import Copies, Record, banner
from mac import BASE, CAMERA, NETWORK, Mac
from submitter import Submitter

SCENARIOS = Path(__file__).resolve().parents[2] / "simulator/scenarios"
CARDS = {CAMERA: "Camera Driver", NETWORK: "Network Driver"}
MANAGED = (BASE, CAMERA, NETWORK)

WORKING = ("checking", "validating", "staging", "removing")  # the stages that a request leaves by itself

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
    """Needs a desktop whose Mac has nothing installed. Whatever does not go as a line says is an AssertionError.
    outdated: see make_outdated(); without it the window's buttons are pressed as they are offered."""

    def __init__(self, desktop, program=Application, outdated=False):
        self.desktop = desktop
        self.program = program
        self.outdated = outdated
        self.disk = Disk(desktop.folder)
        self.mac = Mac(desktop, self.disk.applications)
        self.application = None
        self.others = {}  # the programs that ask while the window stands open, by their applications' names
        self.asks_beside = False  # whether the last of this application's requests was not the window's
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
        self.application = self.desktop.start([executable(self.disk.bundles[TITLE].path)], program=self.program)
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

    # Other programs --------------------------------------------------------------------------------------------------

    def ask_beside(self, kind, identifier, answering="replace", **asker):
        """Has a program without a window ask: that of another application; or one in the bundle of this, which may
        answer as its window never does. The window stands open and is told nothing."""
        self.open()
        name = asker.get("as", TITLE)
        self.asks_beside = name == TITLE
        if name not in self.others:
            self.others[name] = self.desktop.start([self.disk.bundles[name].submit()], program=Submitter)
        self.others[name].submit(kind, identifier, answering)

    def do_answer(self, _, reply):
        self.others[TITLE].answer(reply)

    def expect_heard(self, program, *words):
        """A program without a window hears that. What has changed on the Mac, the window shows when it looks anew."""
        heard = program.next_answer()
        if heard != " ".join(words):
            raise AssertionError(f"{program.name} hears {heard!r}")
        self.expect_silent_window()

    def end_other(self, name):
        if program := self.others.pop(name, None):
            self.expect_nothing_heard(program)
            program.quit()

    def expect_nothing_heard(self, program):
        self.requests_at_rest()
        if heard := program.answers_left():
            raise AssertionError(f"{program.name} hears {heard}")

    # What it is told to do -------------------------------------------------------------------------------------------

    def do_activate(self, identifier, *words):
        told = read_pairs(words, "as", "called", "answering")
        if told.keys() & {"as", "answering"}:
            self.ask_beside("activation", identifier, **told)
            return
        card = CARDS[identifier]
        self.open()
        if self.outdated:
            self.make_outdated(identifier)
        open_requests = len(self.requests())
        if not (title := self.offered(card)):
            raise AssertionError("the application offers no such button")
        self.submit("activation", identifier, lambda: self.application.press(title, card))
        self.expect_log(f"Sysex identifier {identifier}")
        self.expect_crash(open_requests)

    def offered(self, card):
        """The title of the button on a card; nothing if there is none."""
        return next((title for title in ("Upgrade", "Activate") if self.application.has_button(title, card)), None)

    def make_outdated(self, identifier):
        """Has the window offer what it does not offer for an extension that is enabled and not older than what it
        carries: it looked while the person had switched the extension off, and is not told that it is on again."""
        if title := self.offered(CARDS[identifier]):
            raise AssertionError(f"the application offers {title!r} by itself")
        self.mac.does("disable", identifier)
        self.application.choose("Refresh", "Camera Driver")
        self.expect_enumeration()
        self.mac.does("enable", identifier)

    def do_deactivate(self, identifier, *words):
        told = read_pairs(words, "as", "called")
        if "as" in told:
            self.ask_beside("deactivation", identifier, **told)
            return
        self.open()
        open_requests = len(self.requests())
        self.submit("deactivation", identifier, lambda: self.application.choose("Remove", CARDS[identifier]))
        self.expect_crash(open_requests)

    def do_properties(self, identifier, *words):
        read_pairs(words, "called")
        self.open()
        self.application.choose("Refresh", "Camera Driver")
        self.asked = identifier
        self.answer, failures = self.expect_enumeration()
        self.failure = failures.get(identifier)

    def submit(self, kind, identifier, press):
        """Presses, and waits until the service has the request."""
        self.asks_beside = False
        seen = len(self.events)
        press()
        wanted = (identifier, f"{kind} submitted")
        wait_until(
            lambda: any(event[1:] == wanted for event in self.events[seen:]), lambda: f"it asks\n{self.said()}"
        )

    def expect_crash(self, open_requests):
        """The service dies as ordered; the application is told nothing, and says so for each request that was open."""
        if self.crashes:
            for _ in range(open_requests + 1):
                line = self.next_log_line()
                if not line.endswith(f"({UNKNOWN_ERROR})"):
                    raise AssertionError(f"the application logs {line!r}")
        self.crashes = False

    def do_quit(self, name):
        self.end_other(name)
        if name == TITLE and self.application:
            self.desktop.display.close_window(TITLE)
            self.application.wait_for_end()
            self.end()

    def do_restart(self):
        self.mac.does("restart")
        for program in self.others.values():
            program.wait_for_end()
        self.others.clear()
        if self.application:
            self.application.wait_for_end()
            self.end()

    def do_profile(self, file):
        self.mac.does("profile", file if file == "--remove" else SCENARIOS / file)

    def do_fault(self, *words):
        self.crashes = words[-1] == "crash"
        self.mac.does("fault", *words)

    # What is on the disk ---------------------------------------------------------------------------------------------

    def do_move(self, name, to, path):
        self.do_quit(name)
        self.disk.move(name, path)

    def do_update(self, name, to, version):
        self.do_quit(name)
        self.disk.bundles[name].update(version)

    def do_damage(self, file):
        self.do_quit(TITLE)
        self.disk.bundles[TITLE].damage(file)

    def do_carry(self, file, version, *traits):
        self.do_quit(traits[1] if traits[:1] == ("in",) else TITLE)
        self.disk.carry(file, version, *traits)

    def do_bundle(self, name, *traits):
        self.do_quit(name)
        self.disk.put(name, *traits)

    # What is to be seen ----------------------------------------------------------------------------------------------

    def do_expect(self, what, *words):
        if words[-2:-1] == ("as",):
            self.expect_heard(self.others[words[-1]], what, *words[:-2])
        elif self.asks_beside and what in ("needs", "asked", "finished", "failed"):
            self.expect_heard(self.others[TITLE], what, *words)
        else:
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
        for program in self.others.values():
            self.expect_nothing_heard(program)
        if self.application:
            self.expect_silent_window()

    def expect_silent_window(self):
        """The application says nothing more than it did, and shows what there is when it looks anew, if it still can."""
        if self.application.status is None:
            self.application.choose("Refresh", "Camera Driver")
            self.expect_enumeration()
        else:
            self.application.wait_for_last_line()
        if self.application.errors[self.logged :]:
            raise AssertionError(f"the application logs {self.application.errors[self.logged:]}")

    def expect_copies(self, identifier, *words):
        expected = [] if words == ("none",) else " ".join(words).split(", ")
        if self.copies(identifier) != expected:
            raise AssertionError(f"there is {self.copies(identifier)}")

    def expect_copy(self, identifier, *words):
        if " ".join(words) not in self.copies(identifier):
            raise AssertionError(f"there is {self.copies(identifier)}")

    def expect_requests(self, count):
        requests = self.requests_at_rest()
        if len(requests) != (0 if count == "none" else int(count)):
            raise AssertionError(f"there is {requests}")

    def expect_request(self, identifier, stage):
        requests = self.requests_at_rest()
        if (identifier, stage) not in requests:
            raise AssertionError(f"there is {requests}")

    def copies(self, identifier):
        copies = json.loads("\n".join(self.mac.says("list", "--json")))
        return [
            f"{copy['shortVersion']}/{copy['version']} {copy['state']}"
            for copy in copies
            if copy["identifier"] == identifier
        ]

    def requests_at_rest(self):
        """The open requests, once none goes on by itself: the service takes a step between any two questions."""
        before = None
        while (now := self.requests()) != before or any(stage in WORKING for _, stage in now):
            before = now
        return now

    def requests(self):
        requests = json.loads("\n".join(self.mac.says("requests", "--json")))
        return [(request["identifier"], request["stage"]) for request in requests]


def read_pairs(words, *known):
    """What follows an extension in a line, such as "as NAME"."""
    pairs = dict(zip(words[::2], words[1::2], strict=True))
    if unknown := pairs.keys() - known:
        raise AssertionError(f"{unknown} cannot be played")
    return pairs


def answer_in(event):
    return re.fullmatch(r"properties (found|failed) (-?\d+)", event[2])
