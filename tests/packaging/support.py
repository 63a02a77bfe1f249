"""What the tests of the packaging share: the scripts, the extensions and profiles that they are given, and how they run."""

import datetime
import importlib.machinery
import importlib.util
import pathlib
import plistlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PACKAGING = ROOT / "packaging" / "macos"

TEAM = "ABCDE12345"
IDENTITY = f"Developer ID Application: Kelvra ({TEAM})"
BUILD = "2105"
BASE = "com.kelvra.driverkit.base.dext"
CAMERA = "com.kelvra.ip-camera.cmio.systemextension"
NETWORK = "com.kelvra.driverkit.usb-to-poe.dext"

ENTITLEMENTS = {
    BASE: {"com.apple.developer.driverkit": True},
    CAMERA: {"com.apple.security.application-groups": [f"{TEAM}.com.kelvra.ip-camera"]},
    NETWORK: {"com.apple.developer.driverkit": True},
}

GRANTED = {
    "com.apple.application-identifier": f"{TEAM}.com.kelvra.driver-manager",
    "com.apple.developer.system-extension.install": True,
    "com.apple.developer.team-identifier": TEAM,
}

sys.path.insert(0, str(PACKAGING))  # where the scripts find what they share


def load(script):
    """A script of the packaging as a module, without running it."""
    name = script.replace("-", "_")
    loader = importlib.machinery.SourceFileLoader(name, str(PACKAGING / script))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader(name, loader))
    loader.exec_module(module)
    return module


def run(*command, **options):
    """Runs a command to its end, and keeps what it says."""
    command = [str(word) for word in command]
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, universal_newlines=True, **options)


class WithFolder(unittest.TestCase):
    """Each test has a folder of its own."""

    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.place = pathlib.Path(place.name)


def contents(bundle):
    return bundle if bundle.suffix == ".dext" else bundle / "Contents"


def info(name):
    identifier, suffix = name.rsplit(".", 1)
    keys = {
        "CFBundleIdentifier": identifier,
        "CFBundleVersion": BUILD,
        "CFBundleShortVersionString": "2.1",
        "CFBundleExecutable": identifier,
    }
    if suffix == "dext":
        return {**keys, "OSBundleUsageDescription": "Reaches the camera."}
    camera = {"CMIOExtensionMachServiceName": f"{TEAM}.com.kelvra.ip-camera.service"}
    return {**keys, "NSSystemExtensionUsageDescription": "Shows the camera.", "CMIOExtension": camera}


def make(folder, name):
    bundle = folder / name
    place = contents(bundle)
    executable = place / bundle.stem if bundle.suffix == ".dext" else place / "MacOS" / bundle.stem
    executable.parent.mkdir(parents=True)
    executable.write_text("an executable\n")
    change(bundle)
    give_profile(bundle)


def make_all(folder):
    for name in ENTITLEMENTS:
        make(folder, name)


def change(bundle, *without, **values):
    """Writes the bundle's Info.plist, with other values for some keys and without others."""
    keys = {**info(bundle.name), **values}
    for key in without:
        del keys[key]
    (contents(bundle) / "Info.plist").write_bytes(plistlib.dumps(keys))


def give_profile(bundle, team=TEAM, **changes):
    granted = {
        "com.apple.application-identifier": f"{team}.{bundle.stem}",
        "com.apple.developer.team-identifier": team,
        **ENTITLEMENTS.get(bundle.name, {}),
    }
    file = contents(bundle) / "embedded.provisionprofile"
    write_profile(file, **{"TeamIdentifier": [team], "Entitlements": granted, **changes})


def write_entitlements(folder, changes=None):
    folder.mkdir(exist_ok=True)
    for name, entitlements in {**ENTITLEMENTS, **(changes or {})}.items():
        (folder / f"{name.rsplit('.', 1)[0]}.entitlements").write_bytes(plistlib.dumps(entitlements))


def write_profile(file, **changes):
    """A provisioning profile, the application's but for other values for some keys. It is a property list in a signed
    envelope, of which the list alone is read."""
    content = {
        "TeamIdentifier": [TEAM],
        "ExpirationDate": datetime.datetime(2999, 1, 1),
        "ProvisionsAllDevices": True,
        "Entitlements": GRANTED,
        **changes,
    }
    file.write_bytes(b"\x30\x82 envelope " + plistlib.dumps(content) + b" signature \x00")
