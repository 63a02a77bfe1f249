"""Reads property lists, and reads and checks provisioning profiles."""

import plistlib

IDENTIFIER = "com.apple.application-identifier"
RESTRICTED = (IDENTIFIER, "com.apple.developer.")  # macOS ends or refuses a program that claims more than its profile


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


def profile_problem(profile, identifier, entitlements, now):
    """What is wrong with the profile of a bundle that is signed with these entitlements; None if nothing is."""
    if profile is None:
        return "is not a provisioning profile"
    if profile.get("ExpirationDate", now) <= now:
        return f"expired on {profile.get('ExpirationDate', 'a day that it does not say')}"
    if not profile.get("ProvisionsAllDevices"):
        return "is not for distribution with a Developer ID, ProvisionsAllDevices"
    granted = profile.get("Entitlements", {})
    wanted = f"{team_of(profile)}.{identifier}"
    if not is_granted(wanted, granted.get(IDENTIFIER)):
        return f"is for {granted.get(IDENTIFIER)}, but must be for {wanted}"
    for key, value in entitlements.items():
        if key.startswith(RESTRICTED) and not is_granted(value, granted.get(key)):
            return f"does not grant {key}"
    return None


def is_granted(value, granted):
    if isinstance(value, list):
        return isinstance(granted, list) and all(any(is_granted(each, one) for one in granted) for each in value)
    if isinstance(value, str) and isinstance(granted, str) and granted.endswith("*"):
        return value.startswith(granted[:-1])
    return type(value) is type(granted) and value == granted
