"""The application as a user sees it: the banner, the cards, their buttons and menus, and the output."""

import screen
from desktop import BUILD
from program import Program
from screen import Atspi

TITLE = "Driver Manager"
BUNDLE = BUILD / "Driver Manager.app"

RESTARTED = 75  # the exit status of an application that ended with the Mac

NOT_INSTALLED = "Not installed"
NOTHING_INSTALLED = "Both drivers need to be activated to run the camera"
AWAITING = "Open Privacy & Security in System Settings to allow the extensions."
ALL_SET = "Woohoo, you are all set!"

BANNER = Atspi.Role.NOTIFICATION
TEXT = Atspi.Role.LABEL


def executable(bundle=BUNDLE):
    return bundle / "Contents/MacOS/Driver Manager"


class Cards:
    """The window of a running application. The program must have `pid` and `said()`."""

    def __init__(self, program):
        self.screen = screen.Screen(program)

    def banner(self):
        return next(iter(self.screen.names(BANNER)), None)

    def state(self, name):
        """The state text on a card."""
        texts = self.screen.names(TEXT)
        return texts[texts.index(name) + 1] if name in texts[:-1] else None

    def wait_for_banner(self, sentence):
        self.screen.wait_for(lambda: self.banner() == sentence, f"the banner says {sentence!r}")

    def wait_for_state(self, name, state):
        self.screen.wait_for(lambda: self.state(name) == state, f"the card of {name} says {state!r}")

    def wait_for_icon(self, name, enabled):
        """Waits until the name of a card's icon says that the extension is enabled, or not enabled."""
        self.screen.wait_for_node(f"{name}, {'enabled' if enabled else 'not enabled'}", Atspi.Role.IMAGE)

    def press(self, title, name):
        """Presses the button with this title on a card."""
        self.screen.press(f"{title} {name}", Atspi.Role.PUSH_BUTTON)

    def choose(self, item, name):
        """Opens the menu of a card and chooses an item."""
        self.screen.press(f"{name} actions")
        self.screen.press(item, Atspi.Role.MENU_ITEM)


class Application(Program, Cards):
    """The running application. Start it with Desktop.start([executable()], program=Application)."""

    usual_errors = ("Sysex ", "Fatal error: ")

    def __init__(self, *arguments, **options):
        Program.__init__(self, *arguments, **options)
        Cards.__init__(self, self)
