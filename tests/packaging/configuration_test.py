import pathlib
import plistlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

import extensions
import support

SEAL = "_SimulatedSignature.plist"

# The payload's keys, as they are documented, beside those of every payload.
POLICY_KEYS = {
    "AllowUserOverrides",
    "AllowedTeamIdentifiers",
    "AllowedSystemExtensions",
    "AllowedSystemExtensionTypes",
    "RemovableSystemExtensions",
    "NonRemovableSystemExtensions",
    "NonRemovableFromUISystemExtensions",
}
PAYLOAD_KEYS = {"PayloadDisplayName", "PayloadIdentifier", "PayloadType", "PayloadUUID", "PayloadVersion"}
PROFILE_KEYS = PAYLOAD_KEYS | {"PayloadContent", "PayloadDescription", "PayloadScope"}


class WithConfiguration(unittest.TestCase):
    """A build tree that every test of the class configures anew, with values of its own."""

    window = True

    @classmethod
    def setUpClass(cls):
        place = tempfile.TemporaryDirectory()
        cls.addClassCleanup(place.cleanup)
        cls.place = pathlib.Path(place.name)
        cls.build = cls.place / "build"

    def configure(self, **values):
        given = {"BUILD": extensions.BUILD, "TEAM": "", "EXTENSIONS": "", **values}
        command = ["cmake", "-S", str(support.ROOT), "-B", str(self.build), "-D", "BUILD_TESTING=OFF"]
        command += ["-D", f"DRIVER_MANAGER_WINDOW={self.window}"]
        for key, value in given.items():
            command += ["-D", f"DRIVER_MANAGER_{key}={value}"]
        return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, universal_newlines=True)

    def assert_configures(self, **values):
        answer = self.configure(**values)
        self.assertEqual(answer.returncode, 0, answer.stderr)

    def assert_stops(self, *lines, **values):
        answer = self.configure(**values)
        self.assertNotEqual(answer.returncode, 0)
        said = [line.strip() for line in answer.stderr.splitlines()]
        for line in lines:
            self.assertIn(line, said)

    def contents(self, file):
        return plistlib.loads((self.build / file).read_bytes())


class TheTeam(WithConfiguration):
    window = False

    def test_has_ten_capitals_and_digits(self):
        for team in ("abcde12345", "ABCDE1234", "ABCDE123456", "ABCDE-2345"):
            rule = f'the team, from DRIVER_MANAGER_TEAM, is "{team}", but must be ten capitals and digits'
            with self.subTest(team=team):
                self.assert_stops(f"entitlements.plist: {rule}", TEAM=team)

    def test_without_which_nothing_is_there_that_names_one(self):
        self.assert_configures(TEAM=extensions.TEAM)
        self.assert_configures()
        there = {file.name for file in (self.build / "packaging/macos").iterdir()}
        self.assertEqual(there & {"entitlements.plist", "system-extension-policy.mobileconfig"}, set())

    def test_is_filled_into_the_entitlements(self):
        self.assert_configures(TEAM=extensions.TEAM)
        self.assertEqual(
            self.contents("packaging/macos/entitlements.plist"),
            {
                "com.apple.application-identifier": f"{extensions.TEAM}.com.kelvra.driver-manager",
                "com.apple.developer.system-extension.install": True,
                "com.apple.developer.team-identifier": extensions.TEAM,
            },
        )


class TheManagementProfile(WithConfiguration):
    window = False

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls().assert_configures(TEAM=extensions.TEAM)
        cls.profile = cls().contents("packaging/macos/system-extension-policy.mobileconfig")
        cls.policy = cls.profile["PayloadContent"][0]

    def test_has_one_payload_a_system_extension_policy(self):
        self.assertEqual(len(self.profile["PayloadContent"]), 1)
        self.assertEqual(self.policy["PayloadType"], "com.apple.system-extension-policy")
        self.assertEqual((self.profile["PayloadType"], self.profile["PayloadScope"]), ("Configuration", "System"))

    def test_has_every_key_that_a_payload_needs_and_none_that_is_not_documented(self):
        self.assertEqual(set(self.profile), PROFILE_KEYS)
        self.assertLessEqual(PAYLOAD_KEYS, set(self.policy))
        self.assertLessEqual(set(self.policy) - PAYLOAD_KEYS, POLICY_KEYS)

    def test_gives_each_payload_an_identifier_of_its_own(self):
        for key in ("PayloadIdentifier", "PayloadUUID"):
            self.assertNotEqual(self.profile[key], self.policy[key])
        for payload in (self.profile, self.policy):
            pattern = "[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"
            self.assertRegex(payload["PayloadUUID"], f"^{pattern}$")
            self.assertEqual(payload["PayloadVersion"], 1)

    def test_allows_and_lets_go_the_three_extensions_under_the_team(self):
        identifiers = [name.rsplit(".", 1)[0] for name in extensions.ENTITLEMENTS]
        for key in ("AllowedSystemExtensions", "RemovableSystemExtensions"):
            self.assertEqual(self.policy[key], {extensions.TEAM: identifiers})

    def test_does_not_contradict_itself(self):
        # A team that is allowed as a whole and in parts, and what may be removed and may not, are errors.
        self.assertNotIn("AllowedTeamIdentifiers", self.policy)
        self.assertNotIn("NonRemovableSystemExtensions", self.policy)

    def test_leaves_out_the_types_of_extensions_of_which_none_stands_for_a_camera(self):
        self.assertNotIn("AllowedSystemExtensionTypes", self.policy)

    def test_leaves_other_extensions_to_the_user(self):
        self.assertTrue(self.policy.get("AllowUserOverrides", True))


class TheInfoPlist(WithConfiguration):
    def test_holds_what_the_system_asks_for(self):
        self.assert_configures(BUILD="31")
        info = self.contents("Driver Manager.app/Contents/Info.plist")
        expected = {
            "CFBundleIdentifier": "com.kelvra.driver-manager",
            "CFBundleVersion": "31",
            "CFBundlePackageType": "APPL",
            "CFBundleExecutable": "Driver Manager",
            "CFBundleIconFile": "AppIcon",
            "LSMinimumSystemVersion": "12.0",
            "NSHighResolutionCapable": True,
            "NSPrincipalClass": "NSApplication",
        }
        self.assertEqual(info, {**info, **expected})

    def test_gets_no_build_that_the_application_would_stop_at(self):
        subject = "Info.plist: CFBundleVersion, from DRIVER_MANAGER_BUILD, is"
        for build in ("", "2.1.5", "beta", "+5", " 5"):
            with self.subTest(build=build):
                self.assert_stops(f'{subject} "{build}", but must be a plain decimal integer such as 2105', BUILD=build)
        build = "9223372036854775808"
        self.assert_stops(f'{subject} "{build}", but must not exceed 9223372036854775807', BUILD=build)


class TheFolderOfExtensions(WithConfiguration):
    def setUp(self):
        self.folder = self.place / "extensions"
        extensions.make_all(self.folder)
        self.addCleanup(shutil.rmtree, self.folder)

    def embedded(self):
        folder = self.build / "Driver Manager.app/Contents/Library/SystemExtensions"
        return {str(file.relative_to(folder)) for file in folder.rglob("*") if file.is_file()}

    def test_is_embedded_and_its_executables_can_still_be_started(self):
        executable = self.folder / extensions.BASE / "com.kelvra.driverkit.base"
        executable.chmod(0o755)
        (self.folder / "README.md").touch()
        self.assert_configures(EXTENSIONS=self.folder)
        there = {str(file.relative_to(self.folder)) for file in self.folder.rglob("*") if file.is_file()}
        self.assertEqual(self.embedded(), there - {"README.md"})
        folder = self.build / "Driver Manager.app/Contents/Library/SystemExtensions"
        self.assertEqual((folder / executable.relative_to(self.folder)).stat().st_mode & 0o777, 0o755)

    @unittest.skipIf(sys.platform == "darwin", "a Mac has signatures of its own, and no seals")
    def test_is_sealed_in_the_root_of_a_driver_that_is_flat_and_in_the_contents_of_another_extension(self):
        self.assert_configures(EXTENSIONS=self.folder)
        rules = "".join(file.read_text() for name in ("build.ninja", "build.make") for file in self.build.rglob(name))
        seals = set(re.findall(r"SystemExtensions/([\w.-]+(?:/Contents)?/_SimulatedSignature\.plist)", rules))
        expected = {str(extensions.contents(pathlib.Path(name)) / SEAL) for name in extensions.ENTITLEMENTS}
        self.assertEqual(seals, expected)

    def test_keeps_its_links(self):
        framework = self.folder / extensions.CAMERA / "Contents/Frameworks/Codec.framework"
        (framework / "Versions/A").mkdir(parents=True)
        (framework / "Versions/Current").symlink_to("A")
        self.assert_configures(EXTENSIONS=self.folder)
        folder = self.build / "Driver Manager.app/Contents/Library/SystemExtensions"
        self.assertTrue((folder / framework.relative_to(self.folder) / "Versions/Current").is_symlink())

    def test_is_embedded_anew_without_what_is_gone(self):
        extra = self.folder / extensions.CAMERA / "Contents/Resources"
        extra.mkdir()
        (extra / "gone.txt").touch()
        self.assert_configures(EXTENSIONS=self.folder)
        (extra / "gone.txt").unlink()
        self.assert_configures(EXTENSIONS=self.folder)
        self.assertNotIn(f"{extensions.CAMERA}/Contents/Resources/gone.txt", self.embedded())

    def test_stops_the_configuration_with_a_line_for_each_thing_that_is_wrong(self):
        (self.folder / extensions.CAMERA).rename(self.folder / "Camera.systemextension")
        shutil.rmtree(self.folder / extensions.BASE)
        self.assert_stops(
            f"{self.folder}/{extensions.BASE}: is missing",
            f"{self.folder}/Camera.systemextension: has to be named {extensions.CAMERA}, after its CFBundleIdentifier",
            EXTENSIONS=self.folder,
        )

    def test_has_to_be_of_the_team(self):
        problem = f"its profile is of team {extensions.TEAM}, but the application and all it carries of OTHER12345"
        lines = [f"{self.folder}/{name}: {problem}" for name in extensions.ENTITLEMENTS]
        self.assert_stops(*lines, EXTENSIONS=self.folder, TEAM="OTHER12345")


if __name__ == "__main__":
    unittest.main()
