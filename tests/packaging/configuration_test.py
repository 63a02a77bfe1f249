import pathlib
import plistlib
import re
import sys
import tempfile
import unittest

import support


class TheTeam(support.WithFolder):
    """What is written for the team that signs."""

    def configure(self, team):
        script = support.PACKAGING / "CMakeLists.txt"
        return support.run("cmake", "-D", f"DRIVER_MANAGER_TEAM={team}", "-P", script, cwd=self.place)

    def contents(self, file):
        self.assertEqual(self.configure(support.TEAM).returncode, 0)
        return plistlib.loads((self.place / file).read_bytes())

    def test_has_ten_capital_letters_and_digits(self):
        for team in ("abcde12345", "ABCDE1234", "ABCDE123456", "ABCDE-2345"):
            with self.subTest(team=team):
                rule = f'the team, from DRIVER_MANAGER_TEAM, is "{team}", but must be ten capital letters and digits'
                self.assertIn(f"entitlements.plist: {rule}", self.configure(team).stderr)

    def test_is_written_to_the_entitlements(self):
        self.assertEqual(self.contents("entitlements.plist"), support.GRANTED)

    def test_is_required_for_the_files_that_name_it(self):
        self.configure(support.TEAM)
        self.assertEqual(len(list(self.place.iterdir())), 2)
        self.configure("")
        self.assertEqual(list(self.place.iterdir()), [])

    def test_is_the_only_one_in_the_profile_for_managed_macs(self):
        profile = self.contents("system-extension-policy.mobileconfig")
        [policy] = profile["PayloadContent"]
        extensions = {support.TEAM: [name.rsplit(".", 1)[0] for name in support.ENTITLEMENTS]}
        own = {"PayloadDisplayName", "PayloadIdentifier", "PayloadUUID"}
        self.assert_holds(
            policy,
            own,
            PayloadType="com.apple.system-extension-policy",
            AllowedSystemExtensions=extensions,
            RemovableSystemExtensions=extensions,
        )
        own |= {"PayloadContent", "PayloadDescription"}
        self.assert_holds(profile, own, PayloadType="Configuration", PayloadScope="System")
        self.assertNotEqual(profile["PayloadIdentifier"], policy["PayloadIdentifier"])
        self.assertNotEqual(profile["PayloadUUID"], policy["PayloadUUID"])

    def assert_holds(self, payload, own, **values):
        """The payload holds these values and its version, and keys of its own, and nothing else."""
        self.assertEqual(payload, {**payload, **values, "PayloadVersion": 1})
        self.assertEqual(set(payload), {*own, *values, "PayloadVersion"})
        pattern = "[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"
        self.assertRegex(payload["PayloadUUID"], f"^{pattern}$")


class TheConfiguration(unittest.TestCase):
    """A build tree that is configured with extensions, a team and a build, and again without one of their files."""

    @classmethod
    def setUpClass(cls):
        place = tempfile.TemporaryDirectory()
        cls.addClassCleanup(place.cleanup)
        cls.build = pathlib.Path(place.name) / "build"
        cls.folder = pathlib.Path(place.name) / "extensions"
        cls.contents = cls.build / "Driver Manager.app/Contents"
        cls.embedded = cls.contents / "Library/SystemExtensions"
        support.make_all(cls.folder)
        cls.executable = cls.folder / support.BASE / "com.kelvra.driverkit.base"
        cls.executable.chmod(0o755)
        cls.framework = cls.folder / support.CAMERA / "Contents/Frameworks/Codec.framework"
        (cls.framework / "Versions/A").mkdir(parents=True)
        (cls.framework / "Versions/Current").symlink_to("A")
        (cls.framework / "gone.txt").touch()
        (cls.folder / "README.md").touch()
        cls.configured = [cls.configure()]
        (cls.framework / "gone.txt").unlink()
        cls.configured.append(cls.configure())

    @classmethod
    def configure(cls, **values):
        given = {"BUILD": support.BUILD, "TEAM": support.TEAM, "EXTENSIONS": cls.folder, **values}
        definitions = [f"-DDRIVER_MANAGER_{key}={value}" for key, value in given.items()]
        return support.run("cmake", "-S", support.ROOT, "-B", cls.build, "-DBUILD_TESTING=OFF", *definitions)

    def setUp(self):
        self.assertEqual([answer.returncode for answer in self.configured], [0, 0], self.configured)

    def files(self, folder):
        return {str(file.relative_to(folder)) for file in folder.rglob("*") if file.is_file()}

    def test_writes_the_required_keys_of_the_application(self):
        info = plistlib.loads((self.contents / "Info.plist").read_bytes())
        expected = {
            "CFBundleIdentifier": "com.kelvra.driver-manager",
            "CFBundleVersion": support.BUILD,
            "CFBundlePackageType": "APPL",
            "CFBundleExecutable": "Driver Manager",
            "CFBundleIconFile": "AppIcon",
            "LSMinimumSystemVersion": "12.0",
            "NSHighResolutionCapable": True,
            "NSHumanReadableCopyright": "© Kelvra. All rights reserved.",
            "NSPrincipalClass": "NSApplication",
        }
        self.assertEqual(info, {**info, **expected})

    def test_writes_what_names_the_team(self):
        there = {file.name for file in (self.build / "packaging/macos").iterdir()}
        self.assertLessEqual({"entitlements.plist", "system-extension-policy.mobileconfig"}, there)

    def test_embeds_the_extensions_unchanged_and_removes_deleted_files(self):
        self.assertEqual(self.files(self.embedded), self.files(self.folder) - {"README.md"})
        executable = self.embedded / self.executable.relative_to(self.folder)
        self.assertEqual(executable.stat().st_mode & 0o777, 0o755)
        self.assertTrue((self.embedded / self.framework.relative_to(self.folder) / "Versions/Current").is_symlink())

    @unittest.skipIf(sys.platform == "darwin", "a Mac has signatures of its own, and no seals")
    def test_seals_each_extension(self):
        rules = "".join(file.read_text() for name in ("build.ninja", "build.make") for file in self.build.rglob(name))
        sealed = re.findall(r'SystemExtensions/([\w.-]+)"? --team', rules)
        self.assertEqual(set(sealed), set(support.ENTITLEMENTS))

    def test_stops_for_a_build_number_that_the_application_rejects(self):
        rule = (
            'CFBundleVersion, from DRIVER_MANAGER_BUILD, is "2.1.5", but must be a plain decimal integer such as 2105'
        )
        self.assert_stops(f"Info.plist: {rule}", BUILD="2.1.5")

    def test_stops_with_a_line_for_each_problem_of_the_extensions(self):
        (self.folder / support.CAMERA).rename(self.folder / "Camera.systemextension")
        self.addCleanup((self.folder / "Camera.systemextension").rename, self.folder / support.CAMERA)
        name = f"must be named {support.CAMERA}, after its CFBundleIdentifier"
        problem = f"its profile has the team {support.TEAM}, but the application has the team OTHER12345"
        drivers = [f"{self.folder}/{driver}: {problem}" for driver in (support.BASE, support.NETWORK)]
        self.assert_stops(f"{self.folder}/Camera.systemextension: {name}", *drivers, TEAM="OTHER12345")

    def assert_stops(self, *lines, **values):
        answer = self.configure(**values)
        self.assertNotEqual(answer.returncode, 0)
        said = [line.strip() for line in answer.stderr.splitlines()]
        for line in lines:
            self.assertIn(line, said)
