"""A build that is ready to be shipped, in a folder of its own, and the tools of a Mac to ship it with."""

import datetime
import os
import pathlib
import plistlib
import shlex
import shutil
import subprocess
import tempfile
import unittest

import extensions
import support

GRANTED = {
    "com.apple.application-identifier": f"{extensions.TEAM}.com.kelvra.driver-manager",
    "com.apple.developer.system-extension.install": True,
    "com.apple.developer.team-identifier": extensions.TEAM,
}

# What every Unix has, and ship calls.
UNIX = ("cat", "cp", "dirname", "grep", "ln", "mkdir", "mv", "rm", "sed", "touch")


def write_profile(file, **changes):
    """The provisioning profile of the application, with other values for some keys."""
    content = {
        "TeamIdentifier": [extensions.TEAM],
        "ExpirationDate": datetime.datetime(2999, 1, 1),
        "ProvisionsAllDevices": True,
        "Entitlements": GRANTED,
        **changes,
    }
    file.write_bytes(b"envelope " + plistlib.dumps(content) + b" signature")


def run_ship(arguments, place, variables):
    command = [str(support.PACKAGING / "ship"), *arguments]
    return subprocess.run(
        command, cwd=place, env=variables, stdout=subprocess.PIPE, stderr=subprocess.PIPE, universal_newlines=True
    )


class WithBuild(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.place = pathlib.Path(place.name)
        self.app = self.place / "build/Driver Manager.app"
        self.extensions = self.app / "Contents/Library/SystemExtensions"
        self.info_file = self.app / "Contents/Info.plist"
        self.entitlements = self.place / "build/packaging/macos/entitlements.plist"
        self.profile = self.place / "driver-manager.provisionprofile"
        self.log = self.place / "log"
        self.build()
        self.install_tools()

    def build(self):
        extensions.make_all(self.extensions)
        executable = self.app / "Contents/MacOS/Driver Manager"
        executable.parent.mkdir()
        executable.touch()
        info = {"CFBundleShortVersionString": "2.1", "CFBundleVersion": extensions.BUILD}
        self.info_file.write_bytes(plistlib.dumps(info))
        self.entitlements.parent.mkdir(parents=True)
        self.entitlements.write_bytes(plistlib.dumps(GRANTED))
        write_profile(self.profile)

    def install_tools(self):
        self.tools = self.place / "tools"
        self.tools.mkdir()
        for tool in ("codesign", "ditto", "hdiutil", "lipo", "security", "spctl", "xcrun"):
            (self.tools / tool).symlink_to(support.ROOT / "tests/packaging/fake_mac")
        # A Mac has its own tools where those of every Unix are, and none of them may be found there.
        unix = self.place / "unix"
        unix.mkdir()
        for tool in UNIX:
            (unix / tool).symlink_to(shutil.which(tool))
        self.variables = {
            **os.environ,
            "PATH": f"{self.tools}:{unix}",
            "FAKE_MAC_LOG": str(self.log),
            "FAKE_MAC_ENTITLEMENTS": str(self.place / "signed with"),
            "FAKE_MAC_IDENTITY": extensions.IDENTITY,
        }
        extensions.write_entitlements(self.place / "signed with")

    def options(self, **changes):
        given = {"identity": extensions.IDENTITY, "notary_profile": "kelvra", "provisioning_profile": str(self.profile)}
        options = []
        for option, value in {**given, **changes}.items():
            if value is not None:
                options += ["--" + option.replace("_", "-"), value]
        return options

    def ship(self, *arguments, **environment):
        """Ships the build, or does what the arguments say."""
        return run_ship([*(arguments or self.options()), "build"], self.place, {**self.variables, **environment})

    def shipped(self, *arguments, **environment):
        """The commands that a run that succeeds shows, as lists of words, and what it says last."""
        answer = self.ship(*arguments, **environment)
        self.assertEqual(answer.returncode, 0, answer.stderr)
        *commands, last = answer.stdout.splitlines()
        return [shlex.split(command) for command in commands], last

    def calls(self):
        return self.log.read_text().splitlines() if self.log.exists() else []

    def images(self):
        return list(self.place.rglob("build/shipped/*.dmg"))
