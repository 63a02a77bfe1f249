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
OF_ANOTHER_TEAM = f"the team OTHER12345, but the application has the team {support.TEAM}"
NOW = datetime.datetime(2030, 6, 1)


class WithExtensions(support.WithFolder):
    def setUp(self):
        super().setUp()
        self.folder = self.place / "extensions"
        self.entitlements = self.place / "entitlements"
        support.make_all(self.folder)

    def found(self, team=support.TEAM, entitlements=None):
        return list(checker.problems(self.folder, support.BUILD, NOW, team, entitlements))

    def info_file(self, name):
        return support.contents(self.folder / name) / "Info.plist"

    def assert_found(self, *lines, **arguments):
        """Each line is what is found wrong: the file, below the folder unless it is a path of its own, and the rule."""
        expected = [f"{self.folder / file}: {rule}" for file, rule in lines]
        self.assertEqual(self.found(**arguments), expected)


class TheFolderOfExtensions(WithExtensions):
    def test_must_exist(self):
        self.folder = self.folder / "nowhere"
        self.assert_found(("", "is not a folder; it must contain the extensions"))

    def test_may_contain_the_three_bundles_and_other_files(self):
        (self.folder / "README.md").touch()
        self.assert_found()

    def test_gets_one_line_for_each_missing_bundle(self):
        for name in (BASE, NETWORK):
            shutil.rmtree(self.folder / name)
        self.assert_found((BASE, "is missing"), (NETWORK, "is missing"))

    def test_gets_the_correct_name_for_a_misnamed_bundle(self):
        suffix = "com.kelvra.driverkit.base.systemextension"
        for name, wrong in ((CAMERA, "Camera.systemextension"), (BASE, suffix)):
            with self.subTest(wrong):
                (self.folder / name).rename(self.folder / wrong)
                self.assert_found((wrong, f"must be named {name}, after its CFBundleIdentifier"))
                (self.folder / wrong).rename(self.folder / name)

    def test_must_not_contain_another_extension(self):
        other = "com.kelvra.other.dext"
        support.make(self.folder, other)
        self.assert_found((other, "is not one of the application's extensions"))

    def test_has_the_identifiers_of_the_model(self):
        model = (support.ROOT / "model" / "SysExtInfo.h").read_text()
        for identifier in checker.EXTENSIONS:
            self.assertIn(f'"{identifier}"', model)
        self.assertEqual(model.count('"com.kelvra.'), len(checker.EXTENSIONS))


class AnInfoPlist(WithExtensions):
    def test_must_have_each_required_key(self):
        for name in (BASE, CAMERA, NETWORK):
            for key in set(support.info(name)) - {"CMIOExtension"}:
                with self.subTest(name=name, key=key):
                    support.change(self.folder / name, key)
                    self.assert_found((self.info_file(name), f"{key} is missing"))
            support.change(self.folder / name)

    def test_of_a_camera_must_name_its_service(self):
        for camera in ({}, {"CMIOExtensionMachServiceName": ""}, "a text", []):
            with self.subTest(camera=camera):
                support.change(self.folder / CAMERA, CMIOExtension=camera)
                self.assertEqual(len(self.found()), 1)
                start = f"{self.info_file(CAMERA)}: CMIOExtension CMIOExtensionMachServiceName is "
                self.assertTrue(self.found()[0].startswith(start))

    def test_must_be_a_property_list(self):
        for text in ("", "nonsense", "<plist><dict><date>x</date></dict></plist>", "<plist><string>x</string></plist>"):
            with self.subTest(text=text):
                self.info_file(BASE).write_text(text)
                self.assert_found((self.info_file(BASE), "is not a property list of keys and values"))
        self.info_file(BASE).unlink()
        self.assert_found((self.info_file(BASE), "is not a property list of keys and values"))

    def test_may_be_binary(self):
        self.info_file(BASE).write_bytes(plistlib.dumps(support.info(BASE), fmt=plistlib.FMT_BINARY))
        self.assert_found()

    def test_must_have_valid_values(self):
        number = "but must be a plain decimal integer"
        application = "but the application's is 2105, which stands for the builds of all its extensions"
        for key, value, problem in (
            ("CFBundleIdentifier", "com.kelvra.driver", f'is "com.kelvra.driver", but the bundle is named {BASE}'),
            *(
                ("CFBundleVersion", build, f'is "{build}", {number}')
                for build in ("2.1", "2105b", "+2105", "-1", " 2105", "٢١٠٥")
            ),
            ("CFBundleVersion", 2105, "must be text"),
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
        problem = f"its profile has {OF_ANOTHER_TEAM}"
        self.assert_found((CAMERA, problem))

    def test_is_that_of_the_first_bundle_by_default(self):
        support.give_profile(self.folder / NETWORK, "OTHER12345")
        problem = f"its profile has {OF_ANOTHER_TEAM}"
        self.assert_found((NETWORK, problem), team=None)

    def test_is_read_from_the_signature_if_there_is_a_tool(self):
        tool = self.entitlements / "codesign"
        tool.parent.mkdir()
        tool.write_text("#!/bin/sh\ncase $3 in *base.dext) echo TeamIdentifier=OTHER12345 >&2 ;; esac\n")
        tool.chmod(0o755)
        with unittest.mock.patch.dict(os.environ, PATH=f"{tool.parent}:{os.environ['PATH']}"):
            problem = f"its signature has {OF_ANOTHER_TEAM}"
            self.assert_found((BASE, problem))


class AProfileInABundle(WithExtensions):
    """The profile of an extension. TheProvisioningProfile has the other problems that a profile can have."""

    def assert_wrong(self, name, problem, **changes):
        support.give_profile(self.folder / name, **changes)
        self.assert_found((support.contents(self.folder / name) / "embedded.provisionprofile", problem))

    def test_must_be_present_in_a_driver_but_not_in_a_camera(self):
        for name in (CAMERA, NETWORK):
            (support.contents(self.folder / name) / "embedded.provisionprofile").unlink()
        self.assert_found((self.folder / NETWORK / "embedded.provisionprofile", "is not a provisioning profile"))

    def test_must_be_valid_also_in_a_camera(self):
        self.assert_wrong(CAMERA, "expired on 2030-06-01 00:00:00", ExpirationDate=NOW)

    def test_must_be_for_its_extension(self):
        other = f"{support.TEAM}.com.kelvra.driver-manager"
        problem = f"is for {other}, but must be for {support.TEAM}.com.kelvra.driverkit.base"
        self.assert_wrong(BASE, problem, Entitlements=support.GRANTED)

    def test_must_grant_each_restricted_entitlement_that_the_extension_is_signed_with(self):
        usb, driverkit = "com.apple.developer.driverkit.transport.usb", "com.apple.developer.driverkit"
        one, other = {"idVendor": 1}, {"idVendor": 2}
        for granted, held in (([one, other], [one]), ([one], [one, other]), (one, [one])):
            with self.subTest(granted=granted, held=held):
                unrestricted = {"com.apple.security.network.client": True}
                support.write_entitlements(self.entitlements, {BASE: {driverkit: True, usb: held, **unrestricted}})
                identifier = {"com.apple.application-identifier": f"{support.TEAM}.*"}
                support.give_profile(self.folder / BASE, Entitlements={driverkit: True, usb: granted, **identifier})
                file = self.folder / BASE / "embedded.provisionprofile"
                problems = [] if held == [one] and granted != one else [(file, f"does not grant {usb}")]
                self.assert_found(*problems, entitlements=self.entitlements)


class AnEntitlement(WithExtensions):
    def assert_entitled(self, *lines, **changes):
        support.write_entitlements(self.entitlements, changes)
        self.assert_found(*lines, entitlements=self.entitlements)

    def test_that_is_correct_is_accepted(self):
        self.assert_entitled()

    def test_must_exist(self):
        support.write_entitlements(self.entitlements)
        (self.entitlements / "com.kelvra.driverkit.base.entitlements").unlink()
        problem = "has no entitlements; its own build must sign it with them"
        self.assert_found((BASE, problem), entitlements=self.entitlements)

    def test_must_not_allow_debugging(self):
        debugged = {**support.ENTITLEMENTS[CAMERA], "com.apple.security.get-task-allow": True}
        problem = "has com.apple.security.get-task-allow, which allows debugging; remove it before shipping"
        self.assert_entitled((CAMERA, problem), **{CAMERA: debugged})

    def test_of_a_driver_must_include_driverkit(self):
        problem = "lacks the entitlement com.apple.developer.driverkit"
        self.assert_entitled((NETWORK, problem), **{NETWORK: {}})

    def test_of_another_team_is_refused(self):
        other = {**support.ENTITLEMENTS[BASE], "com.apple.developer.team-identifier": "OTHER12345"}
        problem = f"its entitlements have {OF_ANOTHER_TEAM}"
        grant = (self.folder / BASE / "embedded.provisionprofile", "does not grant com.apple.developer.team-identifier")
        self.assert_entitled(grant, (BASE, problem), **{BASE: other})

    def test_must_include_the_group_before_a_dot_in_the_camera_service(self):
        service = f"{support.TEAM}.com.kelvra.ip-camera.service"
        groups = "com.apple.security.application-groups"
        rule = f"{service} must begin with one of {groups} and a dot"
        problem = (self.info_file(CAMERA), f"CMIOExtensionMachServiceName {rule}")
        for held in ([], [f"{support.TEAM}.com.kelvra.ip-cam"], [service]):
            with self.subTest(held=held):
                self.assert_entitled(problem, **{CAMERA: {groups: held}})


class TheScript(WithExtensions):
    def test_needs_the_build_of_the_application(self):
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

    def test_that_grants_the_entitlements_is_accepted(self):
        self.assertIsNone(self.problem())

    def test_must_exist(self):
        self.assertEqual(profile_checker.problem(self.file, support.TEAM, NOW), "is not a provisioning profile")

    def test_must_contain_a_property_list(self):
        for content in (b"", b"envelope", b"<?xml </plist>", b"</plist><?xml"):
            with self.subTest(content=content):
                self.file.write_bytes(content)
                self.assertEqual(profile_checker.problem(self.file, support.TEAM, NOW), "is not a provisioning profile")

    def test_must_have_the_team_be_valid_and_be_for_every_mac(self):
        distribution = "is not for distribution with a Developer ID, ProvisionsAllDevices"
        for key, value, problem in (
            (
                "TeamIdentifier",
                ["OTHER12345"],
                f"has the team OTHER12345, but the application has the team {support.TEAM}",
            ),
            ("ExpirationDate", NOW, "expired on 2030-06-01 00:00:00"),
            ("ProvisionsAllDevices", False, distribution),
        ):
            with self.subTest(key):
                self.assertEqual(self.problem(**{key: value}), problem)

    def test_must_grant_the_installation_of_system_extensions(self):
        right = "com.apple.developer.system-extension.install"
        self.assertEqual(self.granting(**{right: False}), f"does not grant {right}")

    def test_must_be_for_the_application_or_the_whole_team(self):
        key, team = "com.apple.application-identifier", support.TEAM
        wanted = f"{team}.com.kelvra.driver-manager"
        self.assertIsNone(self.granting(**{key: f"{team}.*"}))
        other = f"{team}.com.kelvra.other"
        self.assertEqual(self.granting(**{key: other}), f"is for {other}, but must be for {wanted}")
