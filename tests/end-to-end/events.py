"""Waiting for what happens: every wait here ends with an event, and the time limit only ends a test that has failed."""

from gi.repository import GLib

LIMIT = 30  # seconds

# Functions that look through events which were read already while something else was asked for.
already_read = []

news = []


def note(*_):
    """Whatever may be waited for says here that it happened. To look at a screen brings events that are none."""
    news.append(True)


def wait_until(condition, what):
    """Handles events until the condition holds, and gives what it gave. `what` may be a function that says what is."""
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
