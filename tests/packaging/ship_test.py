import os
import plistlib
import shlex
import shutil

import support
from support import BASE, CAMERA, NETWORK

APP = "build/Driver Manager.app"
STAGED = "build/shipped/staging/Driver Manager.app"
CARRIED = f"{STAGED}/Contents/Library/SystemExtensions"
UNFINISHED = "build/shipped/staging/unfinished.dmg"
IMAGE = "build/shipped/Driver Manager 2.1 (2105).dmg"
READS_A_SIGNATURE = "codesign --display --verbose=2 "  # check-extensions does

# What the camera carries, the innermost first.
LIBRARY = "Contents/Frameworks/Codec.framework/Versions/A/Libraries/table of colors.dylib"
SERVE = "Contents/XPCServices/Codec.xpc/Contents/MacOS/serve"
CODE = (LIBRARY, "Contents/Frameworks/Codec.framework", "Contents/Helpers/a tool", "Contents/XPCServices/Codec.xpc")

# What every Unix has, and ship calls.
UNIX = ("cat", "cp", "dirname", "grep", "ln", "mkdir", "mv", "rm", "sed", "touch")
OF_A_MAC = ("codesign", "ditto", "hdiutil", "lipo", "security", "spctl", "xattr", "xcrun")


def words(text):
    """The commands of a text, as lists of words."""
    return [shlex.split(line) for line in text.splitlines()]


def signatures(commands):
    return [command for command in commands if command[0] == "codesign" and "--sign" in command]


class WithBuild(support.WithFolder):
    """A build that is ready to be shipped, and the tools of a Mac to ship it with."""

    def setUp(self):
        super().setUp()
        self.app = self.place / APP
        self.extensions = self.app / "Contents/Library/SystemExtensions"
        self.entitlements = self.place / "build/packaging/macos/entitlements.plist"
        self.profile = self.place / "driver-manager.provisionprofile"
        self.log = self.place / "log"
        self.build()
        self.install_tools()

    def build(self):
        support.make_all(self.extensions)
        executable = self.app / "Contents/MacOS/Driver Manager"
        executable.parent.mkdir()
        executable.touch()
        self.write_info()
        self.entitlements.parent.mkdir(parents=True)
        self.entitlements.write_bytes(plistlib.dumps(support.GRANTED))
        support.write_profile(self.profile)

    def write_info(self, **changes):
        info = {"CFBundleShortVersionString": "2.1", "CFBundleVersion": support.BUILD, **changes}
        (self.app / "Contents/Info.plist").write_bytes(plistlib.dumps(info))

    def install_tools(self):
        self.tools = self.place / "tools"
        self.tools.mkdir()
        for tool in OF_A_MAC:
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
            "FAKE_MAC_IDENTITY": support.IDENTITY,
        }
        support.write_entitlements(self.place / "signed with")

    def options(self, **changes):
        given = {"identity": support.IDENTITY, "notary_profile": "kelvra", "provisioning_profile": str(self.profile)}
        options = []
        for option, value in {**given, **changes}.items():
            if value is not None:
                options += ["--" + option.replace("_", "-"), value]
        return options

    def ship(self, *arguments, **environment):
        """Ships the build, or does what the arguments say."""
        command = [support.PACKAGING / "ship", *(arguments or self.options()), "build"]
        return support.run(*command, cwd=self.place, env={**self.variables, **environment})

    def dry_run(self, **options):
        return self.ship("--dry-run", *self.options(**options))

    def calls(self):
        return self.log.read_text().splitlines() if self.log.exists() else []

    def images(self):
        return list(self.place.rglob("build/shipped/*.dmg"))


class Shipping(WithBuild):
    """One run that succeeds, and all that is to be seen of it."""

    @classmethod
    def setUpClass(cls):
        cls.made = WithBuild()
        WithBuild.setUp(cls.made)
        cls.addClassCleanup(cls.made.doCleanups)
        cls.carry_code(cls.made.extensions / CAMERA)
        cls.before = sorted(cls.made.app.rglob("*"))
        cls.dry = cls.made.dry_run()
        cls.calls_of_dry_run = cls.made.calls()
        cls.changed_by_dry_run = (cls.made.place / "build/shipped").exists()
        cls.answer = cls.made.ship()
        cls.commands = words(cls.answer.stdout)[:-1]

    def setUp(self):
        self.assertEqual((self.answer.returncode, self.answer.stderr), (0, ""))

    @staticmethod
    def carry_code(camera):
        for file in (LIBRARY, "Contents/Helpers/a tool", SERVE):
            (camera / file).parent.mkdir(parents=True)
            (camera / file).write_bytes(bytes.fromhex("cffaedfe 0c000001"))
        info = plistlib.dumps({"CFBundleExecutable": "serve"})
        (camera / "Contents/XPCServices/Codec.xpc/Contents/Info.plist").write_bytes(info)

    def test_signs_the_innermost_first_the_extensions_before_the_application_and_the_image_last(self):
        carried = [f"{CARRIED}/{CAMERA}/{code}" for code in CODE]
        order = [f"{CARRIED}/{BASE}", *carried, f"{CARRIED}/{CAMERA}", f"{CARRIED}/{NETWORK}", STAGED, UNFINISHED]
        self.assertEqual([command[-1] for command in signatures(self.commands)], order)

    def test_gives_each_signature_identity_and_time_and_code_the_hardened_runtime(self):
        for command in signatures(self.commands):
            with self.subTest(command[-1]):
                self.assertIn("--timestamp", command)
                self.assertEqual(command[command.index("--sign") + 1], support.IDENTITY)
                self.assertEqual("--options runtime" in " ".join(command), command[-1] != UNFINISHED)

    def test_keeps_the_entitlements_of_the_extensions_and_sets_those_of_the_application(self):
        staging = "build/shipped/staging/entitlements"
        expected = {f"{CARRIED}/{CAMERA}/{code}": "--preserve-metadata=identifier,entitlements" for code in CODE}
        for name in support.ENTITLEMENTS:
            expected[f"{CARRIED}/{name}"] = f"--entitlements {staging}/{name.rsplit('.', 1)[0]}.entitlements"
        expected[STAGED] = "--entitlements build/packaging/macos/entitlements.plist"
        for command in signatures(self.commands)[:-1]:
            self.assertIn(f" {expected[command[-1]]} ", " ".join(command))

    def test_leaves_no_extended_attribute_on_anything_that_is_signed(self):
        cleared = self.commands.index(["xattr", "-cr", STAGED])
        written = [self.commands.index(command) for command in self.commands if command[0] in ("cp", "ditto")]
        self.assertEqual([place < cleared for place in written], [True, True, False, False])
        self.assertLess(cleared, self.commands.index(signatures(self.commands)[0]))

    def test_signs_with_the_provisioning_profile_in_the_application(self):
        profile = f"{STAGED}/Contents/embedded.provisionprofile"
        embedded = self.commands.index(["cp", str(self.made.profile), profile])
        self.assertLess(embedded, self.commands.index(signatures(self.commands)[0]))
        self.assertEqual((self.made.place / profile).read_bytes(), self.made.profile.read_bytes())

    def test_notarizes_and_staples_the_application_before_it_is_put_on_the_image_and_then_the_image(self):
        steps = [command[:3] + command[-1:] for command in self.commands if command[0] in ("xcrun", "hdiutil")]
        notarized = [["xcrun", "notarytool", "submit", "json"]]
        stapled = [["xcrun", "stapler", "staple"], ["xcrun", "stapler", "validate"]]
        application = notarized + [[*command, STAGED] for command in stapled]
        image = notarized + [[*command, UNFINISHED] for command in stapled]
        created = [["hdiutil", "create", "-volname", UNFINISHED]]
        self.assertEqual(steps, application + created + image)

    def test_makes_an_image_with_the_application_and_a_link_to_applications(self):
        image = self.made.place / "build/shipped/staging/image"
        self.assertEqual(sorted(os.listdir(image)), ["Applications", "Driver Manager.app"])
        self.assertEqual(os.readlink(image / "Applications"), "/Applications")
        self.assertEqual(self.answer.stdout.splitlines()[-1], IMAGE)
        self.assertEqual(self.made.images(), [self.made.place / IMAGE])

    def test_prints_each_command_and_leaves_the_build_unchanged(self):
        shown = {" ".join(command) for command in self.commands}
        ran = [call for call in self.made.calls() if not call.startswith(READS_A_SIGNATURE)]
        self.assertEqual([call for call in ran if call not in shown], [])
        self.assertEqual(sorted(self.made.app.rglob("*")), self.before)

    def test_is_printed_by_a_dry_run_which_changes_nothing(self):
        self.assertEqual((self.dry.returncode, self.dry.stderr), (0, ""))
        self.assertEqual(words(self.dry.stdout), self.commands)
        self.assertEqual([call for call in self.calls_of_dry_run if not call.startswith(READS_A_SIGNATURE)], [])
        self.assertFalse(self.changed_by_dry_run)


class ADryRun(WithBuild):
    def assert_tells(self, answer, *lines):
        self.assertEqual(answer.stderr.splitlines(), [f"ship: would stop: {line}" for line in lines])
        self.assertEqual(answer.returncode, 3)

    def test_works_without_a_build_and_a_mac_and_reports_what_would_stop(self):
        shutil.rmtree(self.place / "build")
        shutil.rmtree(self.tools)
        answer = self.ship("--dry-run")
        self.assert_tells(
            answer,
            f"{APP}: is missing; cmake --build --preset ship makes it",
            "build/packaging/macos/entitlements.plist: is missing; "
            "cmake --preset ship -D DRIVER_MANAGER_TEAM=... makes it",
            f"{APP}: must be signed; give --identity",
            f"{APP}: must be notarized; give --notary-profile",
            f"{APP}: needs a provisioning profile; give --provisioning-profile",
        )
        self.assertEqual(len(signatures(words(answer.stdout))), 5)

    def test_reports_all_problems_of_a_build_and_of_the_arguments(self):
        shutil.rmtree(self.extensions / CAMERA)
        (self.extensions / BASE).rename(self.extensions / "base.dext")
        (self.app / "Contents/_SimulatedSignature.plist").touch()
        support.write_profile(self.profile, Entitlements={})
        other = "Developer ID Application: Kelvra (OTHER12345)"
        self.assert_tells(
            self.dry_run(identity=other),
            f"{APP}/Contents/_SimulatedSignature.plist: is a seal of the simulator, which must not ship",
            f"{APP}/Contents/Library/SystemExtensions/base.dext: must be named {BASE}, after its CFBundleIdentifier",
            f"{APP}/Contents/Library/SystemExtensions/{CAMERA}: is missing",
            f'{APP}: must be signed with a "Developer ID Application" certificate of team ABCDE12345, not with "{other}"',
            f"{self.profile}: is for None, but must be for {support.TEAM}.com.kelvra.driver-manager",
        )

    def test_reports_a_problem_of_a_property_list(self):
        rule = "must be present, and text"
        for changes, problem in (
            ({"CFBundleVersion": "2.1"}, 'CFBundleVersion is "2.1", but must be a plain decimal integer'),
            ({"CFBundleVersion": ""}, 'CFBundleVersion is "", but must be a plain decimal integer'),
            ({"CFBundleVersion": 2105}, f"CFBundleVersion {rule}"),
            ({"CFBundleShortVersionString": 2}, f"CFBundleShortVersionString {rule}"),
        ):
            with self.subTest(changes):
                self.write_info(**changes)
                self.assert_tells(self.dry_run(), f"{APP}/Contents/Info.plist: {problem}")
        self.write_info()
        self.entitlements.write_text("broken")
        self.assertIn(
            "entitlements.plist: is not a property list of keys and values", self.dry_run().stderr.splitlines()[0]
        )


class APackagingThatCannotSucceed(WithBuild):
    def assert_stops(self, line, *arguments, **environment):
        answer = self.ship(*arguments, **environment)
        self.assertEqual((answer.returncode, answer.stderr), (1, f"ship: {line}\n"))
        self.assertEqual(self.images(), [])
        return answer

    def test_stops_at_the_first_problem_that_a_dry_run_reports(self):
        shutil.rmtree(self.extensions / CAMERA)
        problem = f"{APP}/Contents/Library/SystemExtensions/{CAMERA}: is missing"
        self.assert_stops(problem, *self.options(identity=None))

    def test_with_an_identity_that_is_not_in_the_keychain_stops(self):
        rule = f'must be signed with "{support.IDENTITY}", which is not in the keychain'
        self.assert_stops(f"{APP}: {rule}", FAKE_MAC_IDENTITY="Developer ID Application: Other")

    def test_with_an_executable_for_one_architecture_stops(self):
        rule = "must run on x86_64, but is built for arm64"
        self.assert_stops(f"{APP}/Contents/MacOS/Driver Manager: {rule}", FAKE_MAC_ARCHITECTURES="arm64")

    def test_without_a_tool_stops(self):
        (self.tools / "hdiutil").unlink()
        self.assert_stops("hdiutil: is missing; install Apple's command line tools")

    def test_that_the_notary_rejects_stops_shows_the_log_and_leaves_no_earlier_image(self):
        (self.place / IMAGE).parent.mkdir(parents=True)
        (self.place / IMAGE).touch()
        rule = "the notary rejected it; its log is above"
        answer = self.assert_stops(f"{STAGED}: {rule}", FAKE_MAC_NOTARY="Invalid")
        self.assertEqual(self.calls()[-1], "xcrun notarytool log a-number --keychain-profile kelvra")
        self.assertEqual(answer.stdout.splitlines()[-1], self.calls()[-1])

    def test_stops_at_a_failing_tool_and_names_it(self):
        for call, problem in (
            ("codesign --display --xml", f"{CARRIED}/{BASE}: codesign failed"),
            ("codesign --verify", f"{STAGED}: codesign failed"),
            ("notarytool submit", f"{STAGED}: notarytool failed"),
            ("stapler validate build/shipped/staging/unfinished.dmg", f"{UNFINISHED}: stapler failed"),
        ):
            with self.subTest(call):
                self.assert_stops(problem, FAKE_MAC_FAILS=call)
                self.assertIn(call, self.calls()[-1])


class TheCommandLine(support.WithFolder):
    def ship(self, *arguments):
        return support.run(support.PACKAGING / "ship", *arguments, cwd=self.place)

    def test_refuses_an_unknown_option(self):
        answer = self.ship("--dry-rum", "build")
        self.assertEqual((answer.returncode, answer.stdout), (2, ""))
        self.assertEqual(answer.stderr, "ship: unknown option --dry-rum; see --help\n")

    def test_requires_a_value_for_each_option_that_takes_one(self):
        for option in ("--identity", "--notary-profile", "--provisioning-profile"):
            with self.subTest(option):
                answer = self.ship(option)
                self.assertEqual((answer.returncode, answer.stderr), (2, f"ship: {option} needs a value\n"))

    def test_prints_its_help(self):
        answer = self.ship("--help")
        self.assertEqual(answer.returncode, 0)
        self.assertTrue(answer.stdout.startswith("usage: packaging/macos/ship"))
