"""The simulated Mac's disk: the built application, copied to where it may be moved, updated and damaged, and others."""

import plistlib
import shutil
import subprocess

from application import BUNDLE, TITLE
from desktop import BUILD

SUBMIT = BUILD / "bin/submit"
TEAM = "KELVRA0001"
INSTALL = "com.apple.developer.system-extension.install"
GROUPS = "com.apple.security.application-groups"
EXTENSIONS = "Contents/Library/SystemExtensions"
CATEGORIES = {
    "network_extension": {"NetworkExtension": {}},
    "endpoint_security": {"NSEndpointSecurityMachServiceName": "service"},
    "unknown": {},
}


class Disk:
    """The applications on it by their names. The one with the window is there from the beginning."""

    def __init__(self, folder):
        self.root = folder / "disk"
        self.applications = self.root / "Applications"
        self.bundles = {TITLE: Bundle(self.applications / BUNDLE.name, (INSTALL,))}
        shutil.copytree(BUNDLE, self.bundles[TITLE].path)

    def put(self, name, *traits):
        """Puts an application there that carries nothing; what is there of that name loses its extensions."""
        traits = read_traits(traits)
        bundle = self.bundles.setdefault(name, Bundle(self.applications / f"{name}.app"))
        bundle.entitlements = () if "entitlement" in traits["without"] else (INSTALL,)
        if name != TITLE:
            bundle.make(traits.get("identifier", f"com.example.{name}"))
        bundle.empty()

    def move(self, name, path):
        moved = self.root / path.removeprefix("/")
        moved.parent.mkdir(parents=True, exist_ok=True)
        self.bundles[name].path = self.bundles[name].path.rename(moved)

    def carry(self, file, version, *traits):
        """Puts in an extension with the traits of a scenario's line."""
        traits = read_traits(traits)
        self.bundles[traits.get("in", TITLE)].carry(file, version, traits)


class Bundle:
    """An application's bundle."""

    def __init__(self, path, entitlements=()):
        self.path = path
        self.entitlements = entitlements

    def make(self, identifier):
        (self.path / EXTENSIONS).mkdir(parents=True)
        write_info(self.path, {"CFBundleIdentifier": identifier, "CFBundleExecutable": SUBMIT.name})

    def submit(self):
        """A program in it that asks what it is told to."""
        program = self.path / "Contents/MacOS" / SUBMIT.name
        program.parent.mkdir(exist_ok=True)
        shutil.copy2(SUBMIT, program)
        self.seal()
        return program

    def update(self, version):
        """Gives the application and each of its extensions that version."""
        short, build = version.split("/")
        for bundle in (*self.extensions(), self.path):
            change_info(bundle, CFBundleShortVersionString=short, CFBundleVersion=build)
        for extension in self.extensions():
            seal(extension, TEAM, groups_of(extension))
        self.seal()

    def empty(self):
        """Takes out every extension."""
        for extension in self.extensions():
            shutil.rmtree(extension)
        self.seal()

    def damage(self, name):
        (self.path / EXTENSIONS / name / "Contents/damage").write_text("changed since it was sealed")

    def carry(self, name, version, traits):
        extension = self.path / EXTENSIONS / name
        shutil.rmtree(extension, ignore_errors=True)
        (extension / "Contents").mkdir(parents=True)
        write_info(extension, info_of(extension, version, traits))
        if "seal" not in traits["without"]:
            seal(extension, traits.get("team", TEAM), (f"{GROUPS}={TEAM}.{extension.stem}",))
        if traits["damaged"]:
            self.damage(name)
        self.seal()

    def extensions(self):
        return sorted((self.path / EXTENSIONS).iterdir())

    def seal(self):
        seal(self.path, TEAM, self.entitlements)


def read_traits(words):
    traits = {"without": set(), "damaged": False}
    words = iter(words)
    for word in words:
        if word == "damaged":
            traits["damaged"] = True
        elif word == "without":
            traits["without"].add(next(words))
        else:
            traits[word] = next(words)
    return traits


def info_of(extension, version, traits):
    short, build = version.split("/")
    info = {
        "CFBundleIdentifier": traits.get("identifier", extension.stem),
        "CFBundleShortVersionString": short,
        "CFBundleVersion": build,
        "OSBundleUsageDescription": "Plays its part in a scenario.",
        "NSSystemExtensionUsageDescription": "Plays its part in a scenario.",
    }
    if "identifier" in traits["without"]:
        del info["CFBundleIdentifier"]
    if "usage-description" in traits["without"]:
        del info["OSBundleUsageDescription"], info["NSSystemExtensionUsageDescription"]
    service = traits.get("service", f"{TEAM}.{extension.stem}.service")
    return info | CATEGORIES.get(traits.get("category"), {"CMIOExtension": {"CMIOExtensionMachServiceName": service}})


def groups_of(extension):
    with (extension / "Contents/_SimulatedSignature.plist").open("rb") as file:
        entitlements = plistlib.load(file)["entitlements"]
    groups = entitlements.get(GROUPS, [])
    return [f"{GROUPS}={group}" for group in ([groups] if isinstance(groups, str) else groups)]


def write_info(bundle, info):
    (bundle / "Contents/Info.plist").write_bytes(plistlib.dumps(info))


def change_info(bundle, **values):
    write_info(bundle, plistlib.loads((bundle / "Contents/Info.plist").read_bytes()) | values)


def seal(bundle, team, entitlements):
    words = [word for entitlement in entitlements for word in ("--entitlement", entitlement)]
    subprocess.run([BUILD / "bin/seal", bundle, "--team", team, *words], check=True)
