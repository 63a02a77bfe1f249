import os
import pathlib
import plistlib
import shutil
import subprocess
import tempfile
import unittest
import unittest.mock

import extensions
import support
from extensions import BASE, CAMERA, NETWORK

checker = support.load("check-extensions")


class WithExtensions(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.folder = pathlib.Path(place.name) / "extensions"
        self.entitlements = pathlib.Path(place.name) / "entitlements"
        extensions.make_all(self.folder)

    def found(self, team=extensions.TEAM, entitlements=None):
        return list(checker.problems(self.folder, extensions.BUILD, team, entitlements))

    def info_file(self, name):
        return extensions.contents(self.folder / name) / "Info.plist"

    def assert_found(self, *lines):
        self.assertEqual(self.found(), list(lines))


class TheFolderOfExtensions(WithExtensions):
    def test_is_fine_when_it_holds_the_three_and_nothing_is_wrong_with_them(self):
        self.assert_found()

    def test_has_to_be_there(self):
        self.folder = self.folder / "nowhere"
        self.assert_found(f"{self.folder}: is no folder, and has to hold the extensions")

    def test_may_hold_other_files(self):
        (self.folder / ".DS_Store").touch()
        (self.folder / "README.md").touch()
        self.assert_found()

    def test_is_told_each_bundle_that_is_missing_in_a_line_of_its_own(self):
        for name in (BASE, NETWORK):
            shutil.rmtree(self.folder / name)
        self.assert_found(f"{self.folder / BASE}: is missing", f"{self.folder / NETWORK}: is missing")

    def test_is_told_the_name_of_a_misnamed_bundle_and_not_that_it_is_missing(self):
        wrong = self.folder / "Camera.systemextension"
        (self.folder / CAMERA).rename(wrong)
        self.assert_found(f"{wrong}: has to be named {CAMERA}, after its CFBundleIdentifier")

    def test_is_told_a_wrong_suffix(self):
        wrong = self.folder / "com.kelvra.driverkit.base.systemextension"
        (self.folder / BASE).rename(wrong)
        self.assert_found(f"{wrong}: has to be named {BASE}, after its CFBundleIdentifier")

    def test_may_not_hold_an_extension_that_the_application_does_not_manage(self):
        other = "com.kelvra.other.dext"
        extensions.make(self.folder, other)
        self.assert_found(f"{self.folder / other}: is none of the extensions that the application manages")

    def test_is_named_as_the_model_names_its_records(self):
        model = (support.ROOT / "model" / "SysExtInfo.h").read_text()
        for identifier in checker.EXTENSIONS:
            self.assertIn(f'"{identifier}"', model)
        self.assertEqual(model.count('"com.kelvra.'), len(checker.EXTENSIONS))


class AnInfoPlist(WithExtensions):
    def assert_value_is_refused(self, name, key, value, problem):
        extensions.change(self.folder / name, **{key: value})
        self.assert_found(f"{self.info_file(name)}: {key} {problem}")

    def test_has_to_hold_each_required_key(self):
        for name in (BASE, CAMERA, NETWORK):
            for key in set(extensions.info(name)) - {"CMIOExtension"}:
                with self.subTest(name=name, key=key):
                    extensions.change(self.folder / name, key)
                    self.assert_found(f"{self.info_file(name)}: {key} is missing")
            extensions.change(self.folder / name)

    def test_of_a_camera_has_to_name_its_service(self):
        for camera in ({}, {"CMIOExtensionMachServiceName": ""}, "a text", []):
            with self.subTest(camera=camera):
                extensions.change(self.folder / CAMERA, CMIOExtension=camera)
                self.assertEqual(len(self.found()), 1)
                start = f"{self.info_file(CAMERA)}: CMIOExtension CMIOExtensionMachServiceName is "
                self.assertTrue(self.found()[0].startswith(start))

    def test_of_another_extension_than_a_driver_has_no_use_for_the_description_of_a_driver(self):
        description = {"OSBundleUsageDescription": "Shows the camera."}
        extensions.change(self.folder / CAMERA, "NSSystemExtensionUsageDescription", **description)
        self.assert_found(f"{self.info_file(CAMERA)}: NSSystemExtensionUsageDescription is missing")

    def test_has_to_be_a_property_list(self):
        for text in ("", "nonsense", "<plist><dict><date>x</date></dict></plist>", "<plist><string>x</string></plist>"):
            with self.subTest(text=text):
                self.info_file(BASE).write_text(text)
                self.assert_found(f"{self.info_file(BASE)}: is not a property list of keys and values")

    def test_has_to_be_there(self):
        self.info_file(CAMERA).unlink()
        self.assert_found(f"{self.info_file(CAMERA)}: is not a property list of keys and values")

    def test_may_be_binary(self):
        self.info_file(BASE).write_bytes(plistlib.dumps(extensions.info(BASE), fmt=plistlib.FMT_BINARY))
        self.assert_found()

    def test_has_to_hold_the_identifier_that_the_bundle_is_named_after(self):
        problem = f'is "com.kelvra.driver", but the bundle is named {BASE}'
        self.assert_value_is_refused(BASE, "CFBundleIdentifier", "com.kelvra.driver", problem)

    def test_has_to_hold_a_build_that_is_a_plain_decimal_integer(self):
        for build in ("2.1", "2105b", "+2105", "-1", " 2105", "٢١٠٥"):
            with self.subTest(build=build):
                problem = f'is "{build}", but has to be a plain decimal integer'
                self.assert_value_is_refused(BASE, "CFBundleVersion", build, problem)

    def test_has_to_hold_the_build_as_a_text(self):
        self.assert_value_is_refused(BASE, "CFBundleVersion", 2105, "has to be a text")

    def test_has_to_hold_the_build_of_the_application(self):
        problem = "is 2104, but the application's is 2105, which stands for the builds of all its extensions"
        self.assert_value_is_refused(BASE, "CFBundleVersion", "2104", problem)

    def test_may_not_hold_a_build_setting_that_nobody_replaced(self):
        problem = 'is "$(MARKETING_VERSION)", in which a build setting was not replaced'
        self.assert_value_is_refused(NETWORK, "CFBundleShortVersionString", "$(MARKETING_VERSION)", problem)

    def test_has_to_name_an_executable_that_is_there(self):
        missing = self.folder / BASE / "driver"
        self.assert_value_is_refused(BASE, "CFBundleExecutable", "driver", f'is "driver", but there is no file {missing}')


class ATeam(WithExtensions):
    def test_is_read_from_the_profile_in_the_bundle(self):
        extensions.give_profile(self.folder / CAMERA, "OTHER12345")
        problem = f"its profile is of team OTHER12345, but the application and all it carries of {extensions.TEAM}"
        self.assert_found(f"{self.folder / CAMERA}: {problem}")

    def test_is_that_of_the_first_bundle_where_none_is_given(self):
        extensions.give_profile(self.folder / NETWORK, "OTHER12345")
        problem = f"its profile is of team OTHER12345, but the application and all it carries of {extensions.TEAM}"
        self.assertEqual(self.found(team=None), [f"{self.folder / NETWORK}: {problem}"])

    def test_is_read_from_the_signature_where_there_is_a_tool_for_that(self):
        tool = self.entitlements / "codesign"
        tool.parent.mkdir()
        tool.write_text('#!/bin/sh\ncase $3 in *base.dext) echo TeamIdentifier=OTHER12345 >&2 ;; esac\n')
        tool.chmod(0o755)
        with unittest.mock.patch.dict(os.environ, PATH=f"{tool.parent}:{os.environ['PATH']}"):
            problem = f"its signature is of team OTHER12345, but the application and all it carries of {extensions.TEAM}"
            self.assert_found(f"{self.folder / BASE}: {problem}")

    def test_that_cannot_be_read_is_not_held_against_the_bundle(self):
        (extensions.contents(self.folder / BASE) / "embedded.provisionprofile").write_bytes(b"nothing of the kind")
        (extensions.contents(self.folder / CAMERA) / "embedded.provisionprofile").unlink()
        self.assert_found()


class AnEntitlement(WithExtensions):
    def found_with(self, changes):
        extensions.write_entitlements(self.entitlements, changes)
        return self.found(entitlements=self.entitlements)

    def test_that_is_as_it_has_to_be_is_fine(self):
        self.assertEqual(self.found_with({}), [])

    def test_has_to_be_there(self):
        extensions.write_entitlements(self.entitlements)
        (self.entitlements / "com.kelvra.driverkit.base.entitlements").unlink()
        problem = "has no entitlements; its own build has to sign it with them"
        self.assertEqual(self.found(entitlements=self.entitlements), [f"{self.folder / BASE}: {problem}"])

    def test_may_not_let_anyone_debug_what_ships(self):
        debugged = {**extensions.ENTITLEMENTS[CAMERA], "com.apple.security.get-task-allow": True}
        problem = "may be debugged, com.apple.security.get-task-allow; nothing that ships may"
        self.assertEqual(self.found_with({CAMERA: debugged}), [f"{self.folder / CAMERA}: {problem}"])

    def test_of_a_driver_has_to_let_it_be_one(self):
        problem = "lacks the entitlement com.apple.developer.driverkit"
        self.assertEqual(self.found_with({NETWORK: {}}), [f"{self.folder / NETWORK}: {problem}"])

    def test_of_another_team_is_refused(self):
        other = {**extensions.ENTITLEMENTS[BASE], "com.apple.developer.team-identifier": "OTHER12345"}
        problem = f"its entitlements are of team OTHER12345, but the application and all it carries of {extensions.TEAM}"
        self.assertEqual(self.found_with({BASE: other}), [f"{self.folder / BASE}: {problem}"])

    def test_has_to_hold_a_group_that_the_name_of_the_camera_service_begins_with_up_to_a_dot(self):
        service = f"{extensions.TEAM}.com.kelvra.ip-camera.service"
        groups = "com.apple.security.application-groups"
        problem = f"CMIOExtensionMachServiceName {service} has to begin with one of {groups} and a dot"
        for held in ([], [f"{extensions.TEAM}.com.kelvra.ip-cam"], [f"{service}"]):
            with self.subTest(held=held):
                self.assertEqual(self.found_with({CAMERA: {groups: held}}), [f"{self.info_file(CAMERA)}: {problem}"])


class TheScript(WithExtensions):
    def run_with(self, *arguments):
        command = [str(support.PACKAGING / "check-extensions"), *arguments]
        return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, universal_newlines=True)

    def test_says_nothing_when_nothing_is_wrong(self):
        answer = self.run_with("--build", extensions.BUILD, "--team", extensions.TEAM, str(self.folder))
        self.assertEqual((answer.returncode, answer.stdout, answer.stderr), (0, "", ""))

    def test_says_each_problem_in_one_line_and_fails(self):
        shutil.rmtree(self.folder / BASE)
        extensions.change(self.folder / NETWORK, CFBundleVersion="1.0")
        answer = self.run_with("--build", extensions.BUILD, str(self.folder))
        self.assertEqual(answer.returncode, 1)
        self.assertEqual(len(answer.stderr.splitlines()), 2)

    def test_wants_the_build_of_the_application(self):
        self.assertEqual(self.run_with(str(self.folder)).returncode, 2)

    def test_lists_the_bundles(self):
        self.assertEqual(self.run_with("--list").stdout.split(), [BASE, CAMERA, NETWORK])


if __name__ == "__main__":
    unittest.main()
