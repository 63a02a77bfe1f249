"""Programs that a test starts: their output and their exit status."""

import os
import subprocess

from gi.repository import GLib

from events import note, wait_until


ENDS_WITH_THE_TEST = ("setpriv", "--pdeathsig", "TERM")


class Program:
    """A running program. Its lines are read as they arrive, and each ends a wait."""

    # How each line of its error output may begin. Other programs may write anything.
    usual_errors = ("",)

    def __init__(
        self, arguments, environment=None, folder=None, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, **options
    ):
        self.name = os.path.basename(str(arguments[0]))
        self.output, self.errors = [], []
        self.seen = {}
        self.status = None
        self.process = subprocess.Popen(
            [*ENDS_WITH_THE_TEST, *(str(argument) for argument in arguments)],
            env=environment,
            cwd=folder,
            stdin=stdin,
            stdout=stdout,
            stderr=subprocess.PIPE,
            **options,
        )
        self.open_pipes = 0
        for pipe, lines in ((self.process.stdout, self.output), (self.process.stderr, self.errors)):
            if pipe:
                self.follow(pipe, lines)
        GLib.child_watch_add(GLib.PRIORITY_DEFAULT, self.process.pid, self.ended)

    @property
    def pid(self):
        return self.process.pid

    def follow(self, pipe, lines):
        self.open_pipes += 1
        rest = bytearray()

        def read(descriptor, _):
            data = os.read(descriptor, 65536)
            note()
            rest.extend(data)
            *whole, last = bytes(rest).split(b"\n")
            rest[:] = last
            lines.extend(line.decode(errors="replace") for line in whole)
            if not data:
                if last:
                    lines.append(last.decode(errors="replace"))
                pipe.close()
                self.open_pipes -= 1
            return bool(data)

        GLib.unix_fd_add_full(GLib.PRIORITY_DEFAULT, pipe.fileno(), GLib.IOCondition.IN | GLib.IOCondition.HUP, read)

    def ended(self, _, status):
        self.status = os.waitstatus_to_exitcode(status)
        self.process.returncode = self.status
        note()

    def wait_for_line(self, text, lines=None):
        """Waits for a line of its output that contains the text."""
        lines = self.output if lines is None else lines
        wait_until(lambda: any(text in line for line in lines), lambda: f"{self.name} prints {text!r}\n{self.said()}")

    def wait_for_lines(self, expected, lines=None):
        """Waits for this many more lines since the last call. Returns them sorted: answers come in any order."""
        lines = self.output if lines is None else lines
        seen = self.seen.setdefault(id(lines), 0)
        wait_until(
            lambda: len(lines) >= seen + expected, lambda: f"{self.name} prints {expected} more lines\n{self.said()}"
        )
        self.seen[id(lines)] = len(lines)
        return sorted(lines[seen:])

    def wait_for_end(self):
        """Waits until it has ended. Returns its status, which is negative for a signal."""
        wait_until(lambda: self.status is not None, lambda: f"{self.name} ends\n{self.said()}")
        return self.status

    def wait_for_last_line(self):
        """Waits until its output is closed."""
        wait_until(lambda: self.open_pipes == 0, lambda: f"the output of {self.name} ends\n{self.said()}")

    def signal(self, number):
        if self.status is None:
            os.kill(self.pid, number)

    def end(self):
        if self.status is None:
            self.process.terminate()
            self.wait_for_end()

    def take_unusual_errors(self):
        """The unexpected lines of its error output. Each is returned once."""
        unusual = [line for line in self.errors if not line.startswith(self.usual_errors)]
        self.errors.clear()
        return unusual

    def said(self):
        return "\n".join(["  output:", *self.output[-20:], "  errors:", *self.errors[-20:]])


class QuietProgram(Program):
    """A program that must write no error output."""

    usual_errors = ()
