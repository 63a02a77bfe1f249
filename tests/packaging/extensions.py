"""Extensions as their own builds hand them over, for the tests of what is wrong with others."""

import plistlib

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
    give_profile(bundle, TEAM)


def make_all(folder):
    for name in ENTITLEMENTS:
        make(folder, name)


def change(bundle, *without, **values):
    """Writes the bundle's Info.plist, with other values for some keys and without others."""
    keys = {**info(bundle.name), **values}
    for key in without:
        del keys[key]
    (contents(bundle) / "Info.plist").write_bytes(plistlib.dumps(keys))


def give_profile(bundle, team):
    """A provisioning profile: a property list in a signed envelope, of which the list alone is read."""
    profile = b"\x30\x82 envelope " + plistlib.dumps({"TeamIdentifier": [team]}) + b" signature \x00"
    (contents(bundle) / "embedded.provisionprofile").write_bytes(profile)


def write_entitlements(folder, changes=None):
    folder.mkdir(exist_ok=True)
    for name, entitlements in {**ENTITLEMENTS, **(changes or {})}.items():
        (folder / f"{name.rsplit('.', 1)[0]}.entitlements").write_bytes(plistlib.dumps(entitlements))
