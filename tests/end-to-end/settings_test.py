import unittest

from case import CAMERA, NETWORK, SETTINGS, MacTest
from desktop import BUILD
from events import wait_until
from program import QuietProgram
from screen import Atspi, Screen


class SettingsTest(MacTest):
    def open(self, *copies):
        for identifier, *condition in copies:
            self.mac.does("install", identifier, "2.1", "2105", *condition)
        self.program = self.desktop.start([BUILD / "bin/SystemSettings"], program=QuietProgram)
        self.screen = Screen(self.program)
        self.screen.wait_for_node("Other Extensions", Atspi.Role.LIST)


class Listener:
    """What assistive technology is told of from here on."""

    def __init__(self):
        self.told = []
        self.listener = Atspi.EventListener.new(self.note)
        self.listener.register("object")

    def note(self, event):
        kind = event.type.partition(":")[2]
        self.told.append((kind, event.detail1, event.source.get_role_name(), event.source.get_name()))

    def take_until(self, last):
        """Waits until it is told that; gives what it was told before, and forgets it."""
        wait_until(lambda: last in self.told, lambda: f"assistive technology is told of {last}: {self.told}")
        place = self.told.index(last)
        before, self.told[: place + 1] = self.told[:place], []
        return before


class AssistiveTechnologyInSystemSettings(SettingsTest):
    def test_finds_headings_and_a_modal_dialog(self):
        self.open((NETWORK,))
        titles = ["Privacy & Security", "Camera Extensions", "Driver Extensions", "Other Extensions"]
        self.assertEqual(titles, self.screen.names(Atspi.Role.HEADING))
        application = self.open_application()
        application.choose("Remove", "Network Driver")
        dialog = self.screen.wait_for_node("An administrator has to agree", Atspi.Role.DIALOG)
        self.assertTrue(dialog.get_state_set().contains(Atspi.StateType.MODAL))

    def test_hears_of_a_change_nothing_but_what_it_changed(self):
        self.open((CAMERA,), (NETWORK,))
        listener = Listener()
        self.mac.does("disable", CAMERA)
        listener.take_until(("state-changed:checked", 0, "check box", "Enable Camera"))
        self.mac.does("disable", NETWORK)
        told = listener.take_until(("state-changed:checked", 0, "check box", "Enable Network"))
        renamed = "property-change:accessible-name", 0
        self.assertEqual(
            [(*renamed, "label", "Disabled"), (*renamed, "list item", "Network 2.1/2105, Disabled")], told
        )

    def test_hears_that_the_mac_is_not_running(self):
        self.open()
        listener = Listener()
        self.desktop.bus.kill_service()
        listener.take_until(("state-changed:showing", 1, "notification", "The simulated Mac is not running."))


if __name__ == "__main__":
    unittest.main()
