"""Waiting for what happens: every wait here ends with an event, and the time limit only ends a test that has failed."""

from gi.repository import GLib

LIMIT = 30  # seconds

# Functions that look through events which were read already while something else was asked for; each says whether there
# were any.
already_read = []


def wait_until(condition, what):
    """Handles events until the condition holds, and gives what it gave. `what` may be a function that says what is."""
    expired = []
    limit = GLib.timeout_add_seconds(LIMIT, lambda: expired.append(True) or GLib.SOURCE_CONTINUE)
    try:
        while not (value := condition()):
            if expired:
                raise AssertionError(f"did not happen: {what() if callable(what) else what}")
            if not any([look() for look in already_read]):
                GLib.MainContext.default().iteration(True)
        return value
    finally:
        GLib.source_remove(limit)
