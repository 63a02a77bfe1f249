"""Reads property lists and provisioning profiles."""

import plistlib


def read_plist(file):
    """The dictionary in a property list; None if there is none."""
    try:
        return dictionary(file.read_bytes())
    except OSError:
        return None


def read_profile(file):
    """The dictionary of a provisioning profile, a property list in a signed envelope; None if there is none."""
    try:
        envelope = file.read_bytes()
    except OSError:
        return None
    start, end = envelope.find(b"<?xml"), envelope.find(b"</plist>")
    return dictionary(envelope[start : end + len(b"</plist>")]) if -1 < start < end else None


def dictionary(content):
    try:
        value = plistlib.loads(content)
    except Exception:  # the reader raises exceptions of many types
        return None
    return value if isinstance(value, dict) else None


def team_of(profile):
    """The team of a profile; None if it has none."""
    teams = (profile or {}).get("TeamIdentifier")
    return teams[0] if isinstance(teams, list) and teams else None
