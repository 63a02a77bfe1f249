import datetime
import os
import plistlib
import shutil
import unittest
import unittest.mock

import support
from support import BASE, CAMERA, NETWORK

checker = support.load("check-extensions")
profile_checker = support.load("check-profile")
OF_ANOTHER_TEAM = f"of team OTHER12345, but the application and all it carries of {support.TEAM}"
NOW = datetime.datetime(2030, 6, 1)


class WithExtensions(support.WithFolder):
    def setUp(self):
        super().setUp()
        self.folder = self.place / "extensions"
        self.entitlements = self.place / "entitlements"
        support.make_all(self.folder)

    def found(self, team=support.TEAM, entitlements=None):
        return list(checker.problems(self.folder, support.BUILD, team, entitlements))

    def info_file(self, name):
        return support.contents(self.folder / name) / "Info.plist"

    def assert_found(self, *lines, **arguments):
        """Each line is what is found wrong: the file, below the folder unless it is a path of its own, and the rule."""
        expected = [f"{self.folder / file}: {rule}" for file, rule in lines]
        self.assertEqual(self.found(**arguments), expected)


class TheFolderOfExtensions(WithExtensions):
    def test_has_to_be_there(self):
        self.folder = self.folder / "nowhere"
        self.assert_found(("", "is no folder, and has to hold the extensions"))

    def test_is_fine_with_the_three_in_it_and_any_other_file(self):
        (self.folder / "README.md").touch()
        self.assert_found()

    def test_is_told_each_bundle_that_is_missing_in_a_line_of_its_own(self):
        for name in (BASE, NETWORK):
            shutil.rmtree(self.folder / name)
        self.assert_found((BASE, "is missing"), (NETWORK, "is missing"))

    def test_is_told_the_name_of_a_misnamed_bundle_and_not_that_it_is_missing(self):
        suffix = "com.kelvra.driverkit.base.systemextension"
        for name, wrong in ((CAMERA, "Camera.systemextension"), (BASE, suffix)):
            with self.subTest(wrong):
                (self.folder / name).rename(self.folder / wrong)
                self.assert_found((wrong, f"has to be named {name}, after its CFBundleIdentifier"))
                (self.folder / wrong).rename(self.folder / name)

    def test_may_not_hold_an_extension_that_the_application_does_not_manage(self):
        other = "com.kelvra.other.dext"
        support.make(self.folder, other)
        self.assert_found((other, "is none of the extensions that the application manages"))

    def test_is_named_as_the_model_names_its_records(self):
        model = (support.ROOT / "model" / "SysExtInfo.h").read_text()
        for identifier in checker.EXTENSIONS:
            self.assertIn(f'"{identifier}"', model)
        self.assertEqual(model.count('"com.kelvra.'), len(checker.EXTENSIONS))


class AnInfoPlist(WithExtensions):
    def test_has_to_hold_each_required_key(self):
        for name in (BASE, CAMERA, NETWORK):
            for key in set(support.info(name)) - {"CMIOExtension"}:
                with self.subTest(name=name, key=key):
                    support.change(self.folder / name, key)
                    self.assert_found((self.info_file(name), f"{key} is missing"))
            support.change(self.folder / name)

    def test_of_a_camera_has_to_name_its_service(self):
        for camera in ({}, {"CMIOExtensionMachServiceName": ""}, "a text", []):
            with self.subTest(camera=camera):
                support.change(self.folder / CAMERA, CMIOExtension=camera)
                self.assertEqual(len(self.found()), 1)
                start = f"{self.info_file(CAMERA)}: CMIOExtension CMIOExtensionMachServiceName is "
                self.assertTrue(self.found()[0].startswith(start))

    def test_has_to_be_a_property_list(self):
        for text in ("", "nonsense", "<plist><dict><date>x</date></dict></plist>", "<plist><string>x</string></plist>"):
            with self.subTest(text=text):
                self.info_file(BASE).write_text(text)
                self.assert_found((self.info_file(BASE), "is not a property list of keys and values"))
        self.info_file(BASE).unlink()
        self.assert_found((self.info_file(BASE), "is not a property list of keys and values"))

    def test_may_be_binary(self):
        self.info_file(BASE).write_bytes(plistlib.dumps(support.info(BASE), fmt=plistlib.FMT_BINARY))
        self.assert_found()

    def test_has_to_hold_values_that_can_be_right(self):
        number = "but has to be a plain decimal integer"
        application = "but the application's is 2105, which stands for the builds of all its extensions"
        for key, value, problem in (
            ("CFBundleIdentifier", "com.kelvra.driver", f'is "com.kelvra.driver", but the bundle is named {BASE}'),
            *(("CFBundleVersion", build, f'is "{build}", {number}') for build in ("2.1", "2105b", "+2105", "-1", " 2105", "٢١٠٥")),
            ("CFBundleVersion", 2105, "has to be a text"),
            ("CFBundleVersion", "2104", f"is 2104, {application}"),
            ("CFBundleShortVersionString", "$(VERSION)", 'is "$(VERSION)", in which a build setting was not replaced'),
            ("CFBundleExecutable", "driver", f'is "driver", but there is no file {self.folder / BASE / "driver"}'),
        ):
            with self.subTest(key=key, value=value):
                support.change(self.folder / BASE, **{key: value})
                self.assert_found((self.info_file(BASE), f"{key} {problem}"))


class ATeam(WithExtensions):
    def test_is_read_from_the_profile_in_the_bundle(self):
        support.give_profile(self.folder / CAMERA, "OTHER12345")
        problem = f"its profile is {OF_ANOTHER_TEAM}"
        self.assert_found((CAMERA, problem))

    def test_is_that_of_the_first_bundle_where_none_is_given(self):
        support.give_profile(self.folder / NETWORK, "OTHER12345")
        problem = f"its profile is {OF_ANOTHER_TEAM}"
        self.assert_found((NETWORK, problem), team=None)

    def test_is_read_from_the_signature_where_there_is_a_tool_for_that(self):
        tool = self.entitlements / "codesign"
        tool.parent.mkdir()
        tool.write_text('#!/bin/sh\ncase $3 in *base.dext) echo TeamIdentifier=OTHER12345 >&2 ;; esac\n')
        tool.chmod(0o755)
        with unittest.mock.patch.dict(os.environ, PATH=f"{tool.parent}:{os.environ['PATH']}"):
            problem = f"its signature is {OF_ANOTHER_TEAM}"
            self.assert_found((BASE, problem))

    def test_that_cannot_be_read_is_not_held_against_the_bundle(self):
        (support.contents(self.folder / BASE) / "embedded.provisionprofile").write_bytes(b"nothing of the kind")
        (support.contents(self.folder / CAMERA) / "embedded.provisionprofile").unlink()
        self.assert_found()


class AnEntitlement(WithExtensions):
    def assert_entitled(self, *lines, **changes):
        support.write_entitlements(self.entitlements, changes)
        self.assert_found(*lines, entitlements=self.entitlements)

    def test_that_is_as_it_has_to_be_is_fine(self):
        self.assert_entitled()

    def test_has_to_be_there(self):
        support.write_entitlements(self.entitlements)
        (self.entitlements / "com.kelvra.driverkit.base.entitlements").unlink()
        problem = "has no entitlements; its own build has to sign it with them"
        self.assert_found((BASE, problem), entitlements=self.entitlements)

    def test_may_not_let_anyone_debug_what_ships(self):
        debugged = {**support.ENTITLEMENTS[CAMERA], "com.apple.security.get-task-allow": True}
        problem = "may be debugged, com.apple.security.get-task-allow; nothing that ships may"
        self.assert_entitled((CAMERA, problem), **{CAMERA: debugged})

    def test_of_a_driver_has_to_let_it_be_one(self):
        problem = "lacks the entitlement com.apple.developer.driverkit"
        self.assert_entitled((NETWORK, problem), **{NETWORK: {}})

    def test_of_another_team_is_refused(self):
        other = {**support.ENTITLEMENTS[BASE], "com.apple.developer.team-identifier": "OTHER12345"}
        problem = f"its entitlements are {OF_ANOTHER_TEAM}"
        self.assert_entitled((BASE, problem), **{BASE: other})

    def test_has_to_hold_a_group_that_the_name_of_the_camera_service_begins_with_up_to_a_dot(self):
        service = f"{support.TEAM}.com.kelvra.ip-camera.service"
        groups = "com.apple.security.application-groups"
        rule = f"{service} has to begin with one of {groups} and a dot"
        problem = (self.info_file(CAMERA), f"CMIOExtensionMachServiceName {rule}")
        for held in ([], [f"{support.TEAM}.com.kelvra.ip-cam"], [service]):
            with self.subTest(held=held):
                self.assert_entitled(problem, **{CAMERA: {groups: held}})


class TheScript(WithExtensions):
    def test_wants_the_build_of_the_application(self):
        self.assertEqual(support.run(support.PACKAGING / "check-extensions", self.folder).returncode, 2)


class TheProvisioningProfile(support.WithFolder):
    def setUp(self):
        super().setUp()
        self.file = self.place / "driver-manager.provisionprofile"

    def problem(self, **changes):
        support.write_profile(self.file, **changes)
        return profile_checker.problem(self.file, support.TEAM, NOW)

    def granting(self, **changes):
        return self.problem(Entitlements={**support.GRANTED, **changes})

    def test_that_grants_what_the_application_is_signed_with_is_fine(self):
        self.assertIsNone(self.problem())

    def test_has_to_be_there(self):
        self.assertEqual(profile_checker.problem(self.file, support.TEAM, NOW), "is no provisioning profile")

    def test_has_to_hold_a_property_list(self):
        for content in (b"", b"envelope", b"<?xml </plist>", b"</plist><?xml"):
            with self.subTest(content=content):
                self.file.write_bytes(content)
                self.assertEqual(profile_checker.problem(self.file, support.TEAM, NOW), "is no provisioning profile")

    def test_has_to_be_of_the_team_in_force_and_for_every_mac(self):
        distribution = "is not for distribution with a Developer ID, ProvisionsAllDevices"
        for key, value, problem in (
            ("TeamIdentifier", ["OTHER12345"], f"is of team OTHER12345, but the application of {support.TEAM}"),
            ("ExpirationDate", NOW, "expired on 2030-06-01 00:00:00"),
            ("ProvisionsAllDevices", False, distribution),
        ):
            with self.subTest(key):
                self.assertEqual(self.problem(**{key: value}), problem)

    def test_has_to_grant_the_installation_of_system_extensions(self):
        right = "com.apple.developer.system-extension.install"
        self.assertEqual(self.granting(**{right: False}), f"does not grant {right}")

    def test_has_to_be_for_the_application_or_for_any_of_the_team(self):
        key, team = "com.apple.application-identifier", support.TEAM
        wanted = f"{team}.com.kelvra.driver-manager"
        self.assertIsNone(self.granting(**{key: f"{team}.*"}))
        other = f"{team}.com.kelvra.other"
        self.assertEqual(self.granting(**{key: other}), f"is for {other}, but the application is {wanted}")
