import datetime
import pathlib
import subprocess
import tempfile
import unittest

import built
import extensions
import support

checker = support.load("check-profile")
NOW = datetime.datetime(2030, 6, 1)


class TheProvisioningProfile(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.file = pathlib.Path(place.name) / "driver-manager.provisionprofile"

    def problem(self, **changes):
        built.write_profile(self.file, **changes)
        return checker.problem(self.file, extensions.TEAM, NOW)

    def granting(self, **changes):
        return self.problem(Entitlements={**built.GRANTED, **changes})

    def test_that_grants_what_the_application_is_signed_with_is_fine(self):
        self.assertIsNone(self.problem())

    def test_has_to_be_there(self):
        self.assertEqual(checker.problem(self.file, extensions.TEAM, NOW), "is no provisioning profile")

    def test_has_to_hold_a_property_list(self):
        for content in (b"", b"envelope", b"<?xml </plist>", b"</plist><?xml"):
            with self.subTest(content=content):
                self.file.write_bytes(content)
                self.assertEqual(checker.problem(self.file, extensions.TEAM, NOW), "is no provisioning profile")

    def test_has_to_be_of_the_team(self):
        problem = self.problem(TeamIdentifier=["OTHER12345"])
        self.assertEqual(problem, f"is of team OTHER12345, but the application of {extensions.TEAM}")

    def test_has_to_be_in_force(self):
        problem = self.problem(ExpirationDate=NOW)
        self.assertEqual(problem, "expired on 2030-06-01 00:00:00")

    def test_has_to_be_for_every_mac(self):
        problem = self.problem(ProvisionsAllDevices=False)
        self.assertEqual(problem, "is not for distribution with a Developer ID, ProvisionsAllDevices")

    def test_has_to_grant_the_installation_of_system_extensions(self):
        right = "com.apple.developer.system-extension.install"
        self.assertEqual(self.granting(**{right: False}), f"does not grant {right}")

    def test_has_to_be_for_the_application_or_for_any_of_the_team(self):
        key, team = "com.apple.application-identifier", extensions.TEAM
        wanted = f"{team}.com.kelvra.driver-manager"
        self.assertIsNone(self.granting(**{key: f"{team}.*"}))
        other = f"{team}.com.kelvra.other"
        self.assertEqual(self.granting(**{key: other}), f"is for {other}, but the application is {wanted}")

    def test_is_named_beside_what_is_wrong_with_it(self):
        self.problem()
        command = [str(support.PACKAGING / "check-profile"), "OTHER12345", str(self.file)]
        answer = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, universal_newlines=True)
        line = f"{self.file}: is of team {extensions.TEAM}, but the application of OTHER12345\n"
        self.assertEqual((answer.returncode, answer.stdout, answer.stderr), (1, "", line))


if __name__ == "__main__":
    unittest.main()
