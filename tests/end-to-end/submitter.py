"""An application without a window: it asks the service what a test tells it to, and tells what it hears."""

import json
import subprocess

from events import wait_until
from program import QuietProgram

DOMAIN = "OSSystemExtensionErrorDomain"


class Submitter(QuietProgram):
    """Start it with Desktop.start([disk.bundles[name].submit()], program=Submitter)."""

    def __init__(self, *arguments, **options):
        super().__init__(*arguments, stdin=subprocess.PIPE, **options)
        self.read = 0
        self.heard = []  # what the service told it, and no test asked for yet
        self.reply = None  # what it says when it is asked about a replacement; nothing: it waits to be told
        self.last_asked = None
        self.asked = 0
        self.wait_for_said("ready")

    def submit(self, kind, identifier, reply):
        self.asked += 1
        self.reply = None if reply == "later" else reply
        self.tell({"do": "submit", "token": str(self.asked), "kind": kind, "identifier": identifier}, "taken")

    def answer(self, reply):
        """Answers the replacement question that it was asked last."""
        self.tell({"do": "answer", "token": self.last_asked, "action": reply}, "taken")

    def next_answer(self):
        """The next answer of the service, in the words of a scenario."""
        while not self.heard:
            self.heard.append(self.next_said())
        answer = self.heard.pop(0)
        if answer["said"] == "ReplacementAsked":
            self.last_asked = answer["token"]
            if self.reply:
                self.answer(self.reply)
        return words_of(answer)

    def answers_left(self):
        """Every answer that the service has sent until now."""
        self.tell({"do": "hear"}, "heard")
        heard, self.heard = self.heard, []
        return [words_of(answer) for answer in heard]

    def quit(self):
        self.process.stdin.close()
        return self.wait_for_end()

    def tell(self, order, confirmation):
        self.process.stdin.write(json.dumps(order).encode() + b"\n")
        self.process.stdin.flush()
        self.wait_for_said(confirmation)

    def wait_for_said(self, confirmation):
        while (line := self.next_said())["said"] != confirmation:
            if line["said"] == "refused":
                raise AssertionError(f"the service refuses: {line['message']}")
            self.heard.append(line)

    def next_said(self):
        wait_until(lambda: len(self.output) > self.read, lambda: f"{self.name} hears of it\n{self.said()}")
        self.read += 1
        return json.loads(self.output[self.read - 1])


def words_of(answer):
    if answer["said"] == "NeedsApproval":
        return "needs approval"
    if answer["said"] == "Finished":
        return f"finished {answer['result']}"
    if answer["said"] == "ReplacementAsked":
        return f"asked to replace {version_of(answer['existing'])} by {version_of(answer['replacement'])}"
    if answer["said"] == "Failed" and answer["domain"] == DOMAIN:
        return f"failed {answer['code']}"
    return json.dumps(answer)


def version_of(copy):
    return f"{copy['shortVersion']}/{copy['version']}"
