"""What the application has to show of the copies that it is told of: its rules once more, from the service's side."""

from application import ALL_SET, AWAITING, NOT_INSTALLED, NOTHING_INSTALLED

# The states of a copy that make one of the three flags of an answer true. All others are told without any.
CONDITIONS = {
    "activated waiting for user": "waiting",
    "activated enabled": "enabled",
    "terminating for upgrade via delegate": "uninstalling",
    "terminating for uninstall": "uninstalling",
    "terminated waiting to uninstall on reboot": "uninstalling",
}
UNREPORTED = ("validating", "staging")


class Copies:
    """The copies on the Mac as the service's events tell of them, which begin when there are none."""

    def __init__(self):
        self.copies = []

    def hear(self, identifier, text):
        if not identifier and text == "reset":
            self.copies = []
        version, colon, change = text.partition(": ")
        if not colon:
            return
        before, arrow, after = change.partition(" -> ")
        if not arrow:
            self.copies.append((identifier, version, before))
            return
        place = self.copies.index((identifier, version, before))
        self.copies[place : place + 1] = [(identifier, version, after)] if after != "gone" else []

    def reported(self, identifier):
        """The version and the condition of each copy that an answer tells of, oldest first."""
        return [
            (version, CONDITIONS.get(state, "disabled"))
            for owner, version, state in self.copies
            if owner == identifier and state not in UNREPORTED
        ]


class Record:
    """What one extension's card and its diagnostic line say."""

    def __init__(self, identifier):
        self.identifier = identifier
        self.version = "n/a"
        self.state = NOT_INSTALLED
        self.conditions = set()
        self.reboot = False

    def fold(self, copies):
        """Takes in an answer. An empty one changes nothing."""
        if not copies:
            return
        self.conditions = {condition for _, condition in copies}
        self.version = next((version for version, condition in reversed(copies) if condition == "enabled"), self.version)
        self.state = self.state_text()

    def state_text(self):
        if "enabled" in self.conditions:
            return "Enabled"
        if "waiting" in self.conditions:
            return "Await approval"
        if self.reboot:
            return "Need reboot"
        return "Uninstalling" if "uninstalling" in self.conditions else ""

    def diagnostic_line(self):
        flags = (str(condition in self.conditions).lower() for condition in ("enabled", "waiting", "uninstalling"))
        return f"{self.identifier} {self.version} State: {self.state} [{' '.join(flags)}]"


def banner(cards):
    """What the banner says above these cards."""
    if all("enabled" in card.conditions for card in cards):
        return ALL_SET
    return AWAITING if any("waiting" in card.conditions for card in cards) else NOTHING_INSTALLED
