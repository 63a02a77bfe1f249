import os
import plistlib
import shlex
import shutil
import unittest

import built
import extensions
from extensions import BASE, CAMERA, NETWORK

STAGED = "build/shipped/staging/Driver Manager.app"
CARRIED = f"{STAGED}/Contents/Library/SystemExtensions"
UNFINISHED = "build/shipped/staging/unfinished.dmg"
READS_A_SIGNATURE = "codesign --display --verbose=2 "  # check-extensions does
IMAGE = "build/shipped/Driver Manager 2.1 (2105).dmg"


def signatures(commands):
    return [command for command in commands if command[0] == "codesign" and "--sign" in command]


class Shipping(built.WithBuild):
    def test_signs_the_extensions_before_the_application_and_the_image_last(self):
        commands, _ = self.shipped()
        order = [f"{CARRIED}/{name}" for name in (BASE, CAMERA, NETWORK)] + [STAGED, UNFINISHED]
        self.assertEqual([command[-1] for command in signatures(commands)], order)

    def test_signs_the_code_in_an_extension_before_the_extension_and_the_innermost_first(self):
        framework = "Contents/Frameworks/Codec.framework"
        library = f"{framework}/Versions/A/Libraries/table of colours.dylib"
        (self.extensions / CAMERA / library).parent.mkdir(parents=True)
        (self.extensions / CAMERA / library).touch()
        commands, _ = self.shipped()
        signed = [command[-1] for command in signatures(commands)]
        camera = f"{CARRIED}/{CAMERA}"
        self.assertEqual(signed[1:4], [f"{camera}/{library}", f"{camera}/{framework}", camera])

    def test_signs_nested_bundles_and_helpers_as_what_they_were_and_with_what_they_were_entitled_to(self):
        service, helper = "Contents/XPCServices/Codec.xpc", "Contents/Helpers/a tool"
        for file in (f"{service}/Contents/MacOS/serve", helper):
            (self.extensions / CAMERA / file).parent.mkdir(parents=True)
            (self.extensions / CAMERA / file).write_bytes(bytes.fromhex("cffaedfe 0c000001"))
        info = plistlib.dumps({"CFBundleExecutable": "serve"})
        (self.extensions / CAMERA / service / "Contents/Info.plist").write_bytes(info)
        commands, _ = self.shipped()
        nested = signatures(commands)[1:3]
        self.assertEqual([command[-1] for command in nested], [f"{CARRIED}/{CAMERA}/{code}" for code in (helper, service)])
        for command in nested:
            self.assertIn("--preserve-metadata=identifier,entitlements", command)

    def test_gives_each_signature_the_identity_a_time_and_where_code_runs_the_hardened_runtime(self):
        commands, _ = self.shipped()
        for command in signatures(commands):
            with self.subTest(command[-1]):
                self.assertIn("--timestamp", command)
                self.assertEqual(command[command.index("--sign") + 1], extensions.IDENTITY)
                self.assertEqual("--options runtime" in " ".join(command), command[-1] != UNFINISHED)

    def test_keeps_what_each_extension_is_entitled_to_and_entitles_the_application(self):
        commands, _ = self.shipped()
        entitled = {
            command[-1]: command[command.index("--entitlements") + 1]
            for command in signatures(commands)
            if "--entitlements" in command
        }
        staging = "build/shipped/staging/entitlements"
        expected = {f"{CARRIED}/{name}": f"{staging}/{name.rsplit('.', 1)[0]}.entitlements" for name in extensions.ENTITLEMENTS}
        self.assertEqual(entitled, {**expected, STAGED: "build/packaging/macos/entitlements.plist"})

    def test_signs_with_the_provisioning_profile_in_the_application(self):
        commands, _ = self.shipped()
        profile = f"{STAGED}/Contents/embedded.provisionprofile"
        embedded = commands.index(["cp", str(self.profile), profile])
        self.assertLess(embedded, commands.index(signatures(commands)[0]))
        self.assertEqual((self.place / profile).read_bytes(), self.profile.read_bytes())

    def test_notarises_and_staples_the_application_before_it_is_put_on_the_image_and_then_the_image(self):
        commands, _ = self.shipped()
        steps = [command[:3] + command[-1:] for command in commands if command[0] in ("xcrun", "hdiutil")]
        submitted = ["xcrun", "notarytool", "submit", "json"]
        expected = [submitted]
        expected += [["xcrun", "stapler", "staple", STAGED], ["xcrun", "stapler", "validate", STAGED]]
        expected += [["hdiutil", "create", "-volname", UNFINISHED], submitted]
        expected += [["xcrun", "stapler", "staple", UNFINISHED], ["xcrun", "stapler", "validate", UNFINISHED]]
        self.assertEqual(steps, expected)

    def test_puts_the_application_on_the_image_beside_the_folder_that_it_has_to_go_to(self):
        self.shipped()
        image = self.place / "build/shipped/staging/image"
        self.assertEqual({file.name for file in image.iterdir()}, {"Driver Manager.app", "Applications"})
        self.assertEqual(os.readlink(image / "Applications"), "/Applications")

    def test_says_last_where_the_image_is(self):
        _, last = self.shipped()
        self.assertEqual(last, IMAGE)
        self.assertEqual(self.images(), [self.place / IMAGE])

    def test_shows_whatever_it_runs(self):
        self.assert_shows_its_calls(self.ship())

    def test_shows_whatever_it_runs_when_the_notary_does_not_accept(self):
        self.assert_shows_its_calls(self.ship(FAKE_MAC_NOTARY="Invalid"))

    def assert_shows_its_calls(self, answer):
        shown = {" ".join(shlex.split(line)) for line in answer.stdout.splitlines()}
        unseen = [call for call in self.calls() if call not in shown and not call.startswith(READS_A_SIGNATURE)]
        self.assertEqual(unseen, [])

    def test_leaves_the_build_as_it_was(self):
        before = sorted(self.app.rglob("*"))
        self.shipped()
        self.assertEqual(sorted(self.app.rglob("*")), before)

    def test_can_be_done_again(self):
        self.shipped()
        self.shipped()


class ADryRun(built.WithBuild):
    def test_shows_exactly_the_commands_of_a_real_one(self):
        dry = self.ship("--dry-run", *self.options())
        self.assertEqual((dry.returncode, dry.stderr), (0, ""))
        commands, _ = self.shipped()
        self.assertEqual([shlex.split(line) for line in dry.stdout.splitlines()], commands)

    def test_changes_nothing_and_runs_only_what_reads(self):
        self.ship("--dry-run", *self.options())
        self.assertEqual([call for call in self.calls() if not call.startswith(READS_A_SIGNATURE)], [])
        self.assertFalse((self.place / "build/shipped").exists())

    def test_works_without_a_build_and_without_a_mac_and_tells_what_would_stop(self):
        shutil.rmtree(self.place / "build")
        shutil.rmtree(self.tools)
        answer = self.ship("--dry-run")
        self.assertEqual(answer.returncode, 3)
        told = answer.stderr.splitlines()
        self.assertEqual(len(told), 5)
        self.assertTrue(all(line.startswith("ship: would stop: build/") for line in told), told)
        self.assertEqual(len(signatures([shlex.split(line) for line in answer.stdout.splitlines()])), 5)

    def test_ends_with_three_for_anything_that_would_stop(self):
        built.write_profile(self.profile, Entitlements={})
        self.assertEqual(self.ship("--dry-run", *self.options()).returncode, 3)
        built.write_profile(self.profile)
        self.assertEqual(self.ship("--dry-run", *self.options(notary_profile=None)).returncode, 3)

    def test_tells_everything_that_would_stop_and_not_only_the_first(self):
        extensions.change(self.extensions / BASE, CFBundleVersion="1.0")
        shutil.rmtree(self.extensions / CAMERA)
        answer = self.ship("--dry-run", *self.options(identity=None))
        self.assertEqual(answer.returncode, 3)
        self.assertEqual(len(answer.stderr.splitlines()), 3)


class APackagingThatCannotSucceed(built.WithBuild):
    def assert_stops(self, line, *arguments, **environment):
        answer = self.ship(*arguments, **environment)
        self.assertEqual((answer.returncode, answer.stderr), (1, f"ship: {line}\n"))
        self.assertEqual(self.images(), [])

    def test_for_want_of_a_build_stops(self):
        shutil.rmtree(self.app)
        self.assert_stops("build/Driver Manager.app: is not there; cmake --build --preset ship makes it")

    def test_with_a_version_that_is_no_plain_number_stops(self):
        for build in ("2.1", ""):
            with self.subTest(build):
                self.write_info(CFBundleVersion=build)
                self.assert_info_stops(f'CFBundleVersion is "{build}", but must be a plain decimal integer')

    def test_with_a_version_that_is_no_text_stops(self):
        for key in ("CFBundleShortVersionString", "CFBundleVersion"):
            with self.subTest(key):
                self.write_info(**{key: 2105})
                self.assert_info_stops(f"{key} has to be there, and a text")

    def test_for_want_of_a_version_stops(self):
        self.info_file.write_bytes(plistlib.dumps({"CFBundleShortVersionString": "2.1"}))
        self.assert_info_stops("CFBundleVersion has to be there, and a text")

    def test_with_a_broken_property_list_stops(self):
        self.info_file.write_text("<plist><dict><key>")
        self.assert_info_stops("is not a property list of keys and values")
        self.write_info()
        self.entitlements.write_text("broken")
        self.assert_stops("build/packaging/macos/entitlements.plist: is not a property list of keys and values")

    def write_info(self, **changes):
        info = {"CFBundleShortVersionString": "2.1", "CFBundleVersion": extensions.BUILD}
        self.info_file.write_bytes(plistlib.dumps({**info, **changes}))

    def assert_info_stops(self, rule):
        self.assert_stops(f"build/Driver Manager.app/Contents/Info.plist: {rule}")

    def test_for_want_of_a_team_stops(self):
        self.entitlements.unlink()
        file = "build/packaging/macos/entitlements.plist"
        self.assert_stops(f"{file}: is not there; cmake --preset ship -D DRIVER_MANAGER_TEAM=... makes it")

    def test_for_want_of_an_extension_stops(self):
        shutil.rmtree(self.extensions / CAMERA)
        file = f"build/Driver Manager.app/Contents/Library/SystemExtensions/{CAMERA}"
        self.assert_stops(f"{file}: is missing")

    def test_for_a_misnamed_extension_stops(self):
        (self.extensions / BASE).rename(self.extensions / "base.dext")
        file = "build/Driver Manager.app/Contents/Library/SystemExtensions/base.dext"
        self.assert_stops(f"{file}: has to be named {BASE}, after its CFBundleIdentifier")

    def test_with_a_seal_of_the_simulator_stops(self):
        (self.app / "Contents/_SimulatedSignature.plist").touch()
        file = "build/Driver Manager.app/Contents/_SimulatedSignature.plist"
        self.assert_stops(f"{file}: is a seal of the simulator, and no Mac may be given one")

    def test_for_want_of_an_option_stops(self):
        app = "build/Driver Manager.app"
        for option, rule in {
            "identity": "has to be signed, and no identity is given; give --identity",
            "notary_profile": "has to be notarised, and no credentials are given; give --notary-profile",
            "provisioning_profile": "has to be entitled, and no profile is given; give --provisioning-profile",
        }.items():
            with self.subTest(option):
                self.assert_stops(f"{app}: {rule}", *self.options(**{option: None}))

    def test_with_an_identity_of_another_kind_or_team_stops(self):
        for identity in ("Apple Development: Kelvra (ABCDE12345)", "Developer ID Application: Kelvra (OTHER12345)"):
            with self.subTest(identity):
                rule = f'has to be signed with a "Developer ID Application" of team ABCDE12345, not with "{identity}"'
                self.assert_stops(f"build/Driver Manager.app: {rule}", *self.options(identity=identity))

    def test_with_an_identity_that_is_not_in_the_keychain_stops(self):
        rule = f'has to be signed with "{extensions.IDENTITY}", which is not in the keychain'
        self.assert_stops(f"build/Driver Manager.app: {rule}", FAKE_MAC_IDENTITY="Developer ID Application: Other")

    def test_with_a_provisioning_profile_that_grants_too_little_stops(self):
        built.write_profile(self.profile, Entitlements={})
        self.assert_stops(f"{self.profile}: does not grant com.apple.developer.system-extension.install")

    def test_with_an_executable_for_one_architecture_stops(self):
        rule = "has to run on x86_64, and is built for arm64"
        self.assert_stops(f"build/Driver Manager.app/Contents/MacOS/Driver Manager: {rule}", FAKE_MAC_ARCHITECTURES="arm64")

    def test_for_want_of_a_tool_stops(self):
        (self.tools / "hdiutil").unlink()
        self.assert_stops("hdiutil: is not there; a Mac has it, with Apple's command line tools")

    def test_that_the_notary_does_not_accept_stops_and_shows_its_log(self):
        rule = "the notary does not accept it; its log is above"
        self.assert_stops(f"{STAGED}: {rule}", FAKE_MAC_NOTARY="Invalid")
        self.assertEqual(self.calls()[-1], "xcrun notarytool log a-number --keychain-profile kelvra")

    def test_stops_at_the_first_tool_that_fails_whichever_it_is(self):
        self.shipped()
        calls = [call for call in self.calls() if not call.startswith(("security", "lipo", "codesign --display --verbose"))]
        self.assertGreater(len(calls), 15)
        for call in calls:
            with self.subTest(call):
                self.log.unlink()
                shutil.rmtree(self.place / "build/shipped")
                answer = self.ship(FAKE_MAC_FAILS=call)
                self.assertEqual((answer.returncode, self.calls()[-1], self.images()), (1, call, []))
                self.assertRegex(answer.stderr, r"^ship: build/shipped/staging/[^\n]+: \w+ failed\n$")

    def test_leaves_no_image_of_an_earlier_success(self):
        self.shipped()
        self.ship(FAKE_MAC_FAILS="stapler")
        self.assertEqual(self.images(), [])


class TheCommandLine(built.WithBuild):
    def test_refuses_what_it_does_not_know(self):
        answer = self.ship("--dry-rum")
        self.assertEqual((answer.returncode, answer.stdout), (2, ""))
        self.assertEqual(answer.stderr, "ship: unknown option --dry-rum; --help shows what there is\n")

    def test_wants_a_value_for_each_option_that_has_one(self):
        for option in ("--identity", "--notary-profile", "--provisioning-profile"):
            with self.subTest(option):
                shutil.rmtree(self.place / "build", ignore_errors=True)
                answer = self.ship_bare(option)
                self.assertEqual((answer.returncode, answer.stderr), (2, f"ship: {option} wants a value\n"))

    def test_explains_itself(self):
        answer = self.ship_bare("--help")
        self.assertEqual(answer.returncode, 0)
        self.assertTrue(answer.stdout.startswith("usage: packaging/macos/ship"))

    def ship_bare(self, option):
        return built.run_ship([option], self.place, dict(os.environ))


if __name__ == "__main__":
    unittest.main()
