"""Waiting for events. The time limit only ends a test that has failed."""

from gi.repository import GLib

LIMIT = 30  # seconds

# Functions that handle events that were read while waiting for a reply.
already_read = []

news = []


def note(*_):
    """Ends a wait if its condition holds now. Other GLib events do not: reading a screen causes some."""
    news.append(True)


def wait_until(condition, what):
    """Handles events until the condition holds, and returns its value. `what` is a text or returns one."""
    expired = []
    limit = GLib.timeout_add_seconds(LIMIT, lambda: expired.append(True) or GLib.SOURCE_CONTINUE)
    try:
        while not (value := look_anew(condition)):
            if expired:
                raise AssertionError(f"did not happen: {what() if callable(what) else what}")
            wait_for_news(expired)
        return value
    finally:
        GLib.source_remove(limit)


def look_anew(condition):
    news.clear()
    return condition()


def wait_for_news(expired):
    for look in already_read:
        look()
    while not news and not expired:
        GLib.MainContext.default().iteration(True)
