import unittest

from application import TITLE
from case import CAMERA, NETWORK, SETTINGS, MacTest
from desktop import BUILD
from events import wait_until
from program import QuietProgram
from screen import Atspi, Screen


ICONIC = 3  # Xlib's IconicState


class SettingsTest(MacTest):
    def open(self, *copies, options=()):
        for identifier, *condition in copies:
            self.mac.does("install", identifier, "2.1", "2105", *condition)
        self.program = self.desktop.start([BUILD / "bin/SystemSettings", *options], program=QuietProgram)
        self.screen = Screen(self.program)
        self.screen.wait_for_node("Other Extensions", Atspi.Role.LIST)


class Listener:
    """Records the events that assistive technology receives."""

    def __init__(self):
        self.told = []
        self.listener = Atspi.EventListener.new(self.note)
        self.listener.register("object")

    def note(self, event):
        kind = event.type.partition(":")[2]
        self.told.append((kind, event.detail1, event.source.get_role_name(), event.source.get_name()))

    def take_until(self, last):
        """Waits for this event. Returns the events before it, and drops them all."""
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

    def test_hears_only_what_a_change_affects(self):
        self.open((CAMERA,), (NETWORK,))
        listener = Listener()
        self.mac.does("disable", CAMERA)
        listener.take_until(("state-changed:checked", 0, "check box", "Enable Camera"))
        self.mac.does("disable", NETWORK)
        told = listener.take_until(("state-changed:checked", 0, "check box", "Enable Network"))
        renamed = "property-change:accessible-name", 0
        self.assertEqual([(*renamed, "label", "Disabled"), (*renamed, "list item", "Network 2.1/2105, Disabled")], told)

    def test_hears_that_the_mac_is_not_running(self):
        self.open()
        listener = Listener()
        self.desktop.bus.kill_service()
        listener.take_until(("state-changed:showing", 1, "notification", "The simulated Mac is not running."))


class TheWindowOfSystemSettings(SettingsTest):
    """It appears when there is something to decide."""

    def expect_it_comes(self, ask):
        ask()
        self.desktop.display.wait_until_active(SETTINGS)
        stack = self.desktop.display.property(self.desktop.display.root, "_NET_CLIENT_LIST_STACKING")
        self.assertEqual(self.desktop.display.window(SETTINGS).id, stack[-1])

    def install_what_needs_approval(self):
        self.mac.does("install", CAMERA, "2.1", "2105", "waiting")

    def cover(self):
        application = self.open_application()
        self.desktop.display.raise_window(TITLE)
        return application

    def close(self):
        self.desktop.display.close_window(SETTINGS)
        wait_until(lambda: not self.desktop.display.windows(SETTINGS), "the window closes")

    def test_comes_to_the_front_when_an_administrator_is_asked(self):
        self.open((NETWORK,))
        application = self.cover()
        self.expect_it_comes(lambda: application.choose("Remove", "Network Driver"))

    def test_comes_back_after_it_was_minimized(self):
        self.open()
        window = self.desktop.display.window(SETTINGS)
        self.cover()
        self.desktop.display.tell_window_manager("WM_CHANGE_STATE", window, ICONIC)
        hidden = self.desktop.display.connection.intern_atom("_NET_WM_STATE_HIDDEN")
        state = lambda: self.desktop.display.property(window, "_NET_WM_STATE") or []  # noqa: E731
        wait_until(lambda: hidden in state(), "the window is minimized")
        self.expect_it_comes(self.install_what_needs_approval)
        self.assertNotIn(hidden, state())

    def test_comes_back_after_it_was_closed_with_the_option_stay(self):
        self.open(options=["--stay"])
        self.close()
        self.expect_it_comes(self.install_what_needs_approval)

    def test_ends_when_it_is_closed_without_that_option(self):
        self.open()
        self.close()
        self.assertEqual(0, self.program.wait_for_end())

    def test_opens_only_once_and_then_comes_to_the_front(self):
        self.open()
        self.cover()
        again = []
        self.expect_it_comes(lambda: again.append(self.desktop.run(BUILD / "bin/SystemSettings")))
        self.assertEqual([0, []], [again[0].status, again[0].errors])
        self.assertEqual(1, len(self.desktop.display.windows(SETTINGS)))

    def test_stays_in_the_background_while_nothing_new_is_asked(self):
        self.open((CAMERA, "waiting"), (NETWORK,))
        application = self.cover()
        self.mac.does("disable", NETWORK)
        self.screen.wait_for_node("Disabled", Atspi.Role.LABEL)
        self.mac.does("allow", CAMERA)
        self.screen.wait_for_node("Enable Camera")
        self.assertTrue(application.screen.is_active())


if __name__ == "__main__":
    unittest.main()
