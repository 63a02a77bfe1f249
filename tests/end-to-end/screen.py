"""A program as assistive technology sees and uses it."""

import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from events import note, wait_until  # noqa: E402

listeners = []


def listen():
    """Makes every event of assistive technology end a wait."""
    Atspi.init()
    for kind in ("object", "window", "focus"):
        listener = Atspi.EventListener.new(note)
        listener.register(kind)
        listeners.append(listener)


class Screen:
    """The window of a running program as assistive technology sees it."""

    def __init__(self, program):
        if not listeners:
            listen()
        self.program = program

    def application(self):
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(index)
            if child and child.get_process_id() == self.program.pid:
                child.set_cache_mask(Atspi.Cache.NONE)
                return child
        return None

    def nodes(self):
        """All objects of the program, in reading order; none while it starts or ends."""
        try:
            application = self.application()
            return [node for node in walk(application) if is_shown(node)] if application else []
        except GLib.Error:
            return []

    def names(self, *roles):
        try:
            return [node.get_name() for node in self.nodes() if node.get_role() in roles]
        except GLib.Error:
            return []

    def is_active(self):
        """Whether its window has focus."""
        return any(node.get_state_set().contains(Atspi.StateType.ACTIVE) for node in self.nodes())

    def find(self, name, *roles):
        for node in self.nodes():
            if node.get_name() == name and (not roles or node.get_role() in roles):
                return node
        return None

    def wait_for(self, condition, what):
        return wait_until(condition, lambda: f"{what}\n{self.description()}\n{self.program.said()}")

    def wait_for_node(self, name, *roles):
        return self.wait_for(lambda: self.find(name, *roles), f"the screen has {name!r}")

    def press(self, name, *roles):
        act(self.wait_for_node(name, *roles), "press", "click", "Press")

    def description(self):
        try:
            return "\n".join(f"  {node.get_role_name()}: {node.get_name()!r}" for node in self.nodes())
        except GLib.Error as error:
            return str(error)


def walk(node):
    yield node
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child:
            yield from walk(child)


def is_shown(node):
    return node.get_state_set().contains(Atspi.StateType.SHOWING) or node.get_role() == Atspi.Role.APPLICATION


def act(node, *names):
    actions = names_of_actions(node)
    known = [name for name in names if name in actions]
    if not known:
        raise AssertionError(f"{node.get_name()!r} cannot be pressed: it has {actions}")
    node.do_action(actions.index(known[0]))


def names_of_actions(node):
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")  # the binding wrongly reports the function as deprecated
        return [node.get_action_name(index) for index in range(node.get_n_actions())]
