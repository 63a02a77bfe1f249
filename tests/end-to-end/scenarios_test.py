"""The scenarios of the simulator, each played through the application, and what its window shows in the end."""

import unittest
from unittest.mock import patch

import events
from application import ALL_SET, AWAITING, NOT_INSTALLED, NOTHING_INSTALLED, Application
from case import DesktopTest
from desktop import SERVICES
from mac import CAMERA, NETWORK
from player import SCENARIOS, Player

# A running application keeps what an empty answer does not mention: the copy that was denied meanwhile.
STILL_AWAITING = AWAITING, "Await approval"


class ScenarioTest(DesktopTest):
    services = SERVICES

    def play(self, name, banner=NOTHING_INSTALLED, camera=NOT_INSTALLED, network=NOT_INSTALLED, **options):
        player = Player(self.desktop, **options)
        player.play((SCENARIOS / f"{name}.scenario").read_text())
        player.application.wait_for_banner(banner)
        player.application.wait_for_state("Camera Driver", camera)
        player.application.wait_for_state("Network Driver", network)
        self.desktop.display.close_window("Driver Manager")
        self.assertEqual(0, player.application.wait_for_end())
        player.end()


class TheScenario(ScenarioTest):
    def test_of_the_plain_road(self):
        self.play("plain-road")

    def test_of_an_upgrade(self):
        self.play("upgrade", camera="Enabled")

    def test_of_an_upgrade_that_asks_again(self):
        self.play("upgrade-asks-again", camera="Enabled")

    def test_of_an_upgrade_that_is_declined(self):
        self.play("replacement-declined", camera="Enabled")

    def test_of_an_upgrade_with_the_old_build_running_until_the_restart(self):
        self.play("upgrade-until-restart", network="Enabled")

    def test_of_a_removal_that_waits_for_the_restart(self):
        self.play("removal-until-restart")

    def test_of_developer_mode(self):
        self.play("developer-mode", camera="Enabled")

    def test_of_an_extension_that_is_switched_off_and_on(self):
        self.play("disable-enable", camera="Enabled")

    def test_of_waiting_for_ever(self):
        self.play("waiting-for-ever", camera="Enabled")

    def test_of_waiting_over_a_restart(self):
        self.play("waiting-over-a-restart", camera="Enabled")

    def test_of_a_denial(self):
        self.play("denied", camera="Enabled")

    def test_of_a_denial_that_is_not_told(self):
        self.play("denied-unheard", camera="Enabled")

    def test_of_several_dying_copies(self):
        self.play("several-dying-copies", camera="Enabled")

    def test_of_a_copy_that_outlives_the_restart(self):
        self.play("a-copy-outlives-the-restart")

    def test_of_two_requests_at_once(self):
        self.play("two-requests-at-once", camera="Enabled")

    def test_of_two_requests_of_which_the_newer_fails(self):
        self.play("two-requests-the-newer-fails", camera="Enabled")

    def test_of_two_extensions(self):
        self.play("two-extensions", ALL_SET, camera="Enabled", network="Enabled")

    def test_of_another_application(self):
        self.play("another-application", camera="Enabled")

    def test_of_a_removal_that_is_refused(self):
        self.play("removal-refused", camera="Uninstalling")

    def test_of_a_removal_by_hand(self):
        self.play("removed-by-hand", AWAITING, camera="Await approval")

    def test_of_a_profile_that_forbids(self):
        self.play("forbidden-by-profile", *STILL_AWAITING, network="Enabled")

    def test_of_a_profile_that_arrives(self):
        self.play("profile-arrives", camera="Uninstalling")

    def test_of_the_wrong_folder(self):
        self.play("wrong-folder", camera="Enabled")

    def test_of_a_damaged_extension(self):
        self.play("damaged-extension", camera="Enabled")

    def test_of_an_answer_that_never_comes(self):
        self.play("no-answer", camera="Enabled")

    def test_of_an_answer_that_comes_late(self):
        self.play("late-answer", camera="Enabled")

    def test_of_a_service_that_dies(self):
        self.play("service-crash", ALL_SET, camera="Enabled", network="Enabled")

    def test_of_a_finish_with_nothing_running(self):
        self.play("hollow-finish", camera="Enabled")

    def test_of_a_prompt_that_is_never_shown(self):
        self.play("hidden-prompt", camera="Enabled")

    def test_of_an_error_of_another_domain(self):
        self.play("foreign-error")

    def test_of_asking_after_nothing(self):
        self.play("properties-of-nothing")

    def test_of_asking_after_nothing_where_that_fails(self):
        self.play("properties-of-nothing-fail", camera="Enabled")


class AWindowThatDoesNotKnowThatAnExtensionIsOnAgain(ScenarioTest):
    def test_plays_the_scenario_of_the_same_version(self):
        self.play("activate-again", camera="Enabled", outdated=True)

    def test_plays_the_scenario_of_the_same_version_in_developer_mode(self):
        self.play("developer-mode-same-version", camera="Enabled", outdated=True)

    def test_plays_the_scenario_of_an_older_version(self):
        self.play("downgrade", camera="Enabled", outdated=True)


class TheScenarioOfError(ScenarioTest):
    def test_1(self):
        self.play("error-01-internal", *STILL_AWAITING)

    def test_2(self):
        self.play("error-02-missing-entitlement")

    def test_3(self):
        self.play("error-03-outside-applications", camera="Enabled")

    def test_4(self):
        self.play("error-04-not-found")

    def test_5(self):
        self.play("error-05-missing-identifier")

    def test_6(self):
        self.play("error-06-duplicate-identifier")

    def test_7(self):
        self.play("error-07-unknown-category", *STILL_AWAITING)

    def test_8(self):
        self.play("error-08-invalid-signature")

    def test_9(self):
        self.play("error-09-validation-failed")

    def test_10(self):
        self.play("error-10-forbidden-by-policy", camera="Enabled")

    def test_11(self):
        self.play("error-11-cancelled", *STILL_AWAITING)

    def test_12(self):
        self.play("error-12-superseded", camera="Enabled")

    def test_13(self):
        self.play("error-13-authorization-required", camera="Enabled")


class Misread(Application):
    """The application with one text of its window read as another. What waits for the former need not wait long."""

    right, wrong = None, None

    def banner(self):
        return self.misread(super().banner())

    def state(self, name):
        return self.misread(super().state(name))

    def misread(self, text):
        return self.wrong if text == self.right else text

    def wait_for_banner(self, sentence):
        with self.limit(sentence):
            super().wait_for_banner(sentence)

    def wait_for_state(self, name, state):
        with self.limit(state):
            super().wait_for_state(name, state)

    def limit(self, awaited):
        return patch("events.LIMIT", 1 if awaited == self.right else events.LIMIT)


class OfAWrongCard(Misread):
    right, wrong = "Uninstalling", "Need reboot"


class OfAWrongBanner(Misread):
    right, wrong = ALL_SET, NOTHING_INSTALLED


class MisreadLines(list):
    def extend(self, lines):
        super().extend(line.replace("State: Enabled", "State: Await approval") for line in lines)


class OfAWrongLine(Application):
    """The application with one state that it prints read as another."""

    def follow(self, pipe, lines):
        if lines is self.output:
            lines = self.output = MisreadLines()
        super().follow(pipe, lines)


class ThePlayer(DesktopTest):
    services = SERVICES

    def expect_problem(self, problem, *lines, **options):
        with self.assertRaisesRegex(AssertionError, problem):
            Player(self.desktop, **options).play("\n".join(lines))

    def test_ends_at_the_first_line_that_the_application_does_not_log(self):
        self.expect_problem(
            "^line 3: expect finished 0: the application logs 'Sysex request needs user approval.'",
            "# Why",
            f"activate {CAMERA}",
            "expect finished 0",
            "expect finished 1",
        )

    def test_ends_where_the_application_logs_what_no_line_expects(self):
        self.expect_problem(
            r"^line 2: expect nothing: the application logs \['Sysex request needs user approval.'\]",
            f"activate {CAMERA}",
            "expect nothing",
        )

    def test_ends_where_the_failure_is_another(self):
        self.expect_problem(
            "^line 3: expect failed 8 saying other: the application logs 'Sysex request failed: bad seal ",
            'fault next activate 8 "bad seal"',
            f"activate {CAMERA}",
            "expect failed 8 saying other",
        )

    def test_ends_where_the_diagnostic_line_is_another(self):
        self.expect_problem(
            "^line 3: expect found 2.0/2004 waiting: the application prints ",
            f"install {CAMERA} 2.0 2004",
            f"properties {CAMERA}",
            "expect found 2.0/2004 waiting",
        )

    def test_ends_where_the_state_in_the_diagnostic_line_is_another(self):
        self.expect_problem(
            f"^line 2: properties {CAMERA}: the application prints '{CAMERA} 2.0/2004 State: Await approval "
            rf"\[true false false\]', not '{CAMERA} 2.0/2004 State: Enabled \[true false false\]'",
            f"install {CAMERA} 2.0 2004",
            f"properties {CAMERA}",
            program=OfAWrongLine,
        )

    def test_ends_where_a_card_says_another_state(self):
        self.expect_problem(
            f"^line 3: properties {CAMERA}: did not happen: the card of Network Driver says 'Uninstalling'",
            f"properties {CAMERA}",
            f"install {NETWORK} 2.0 2004 uninstalling",
            f"properties {CAMERA}",
            "expect nothing",
            program=OfAWrongCard,
        )

    def test_ends_where_the_banner_says_another_sentence(self):
        self.expect_problem(
            f"^line 4: properties {CAMERA}: did not happen: the banner says '{ALL_SET}'",
            f"install {NETWORK} 2.1 2105",
            f"properties {CAMERA}",
            f"install {CAMERA} 2.1 2105",
            f"properties {CAMERA}",
            "expect nothing",
            program=OfAWrongBanner,
        )

    def test_ends_where_no_line_expects_that_an_answer_fails(self):
        self.expect_problem(
            r"^line 3: expect nothing: the application logs 'Sysex request failed: .* \(Extension not found.\)'",
            "switch properties error",
            f"properties {CAMERA}",
            "expect nothing",
        )

    def test_ends_where_the_copies_are_others(self):
        self.expect_problem(
            rf"^line 2: expect copies {CAMERA} none: there is \['2.0/2004 activated enabled'\]",
            f"install {CAMERA} 2.0 2004",
            f"expect copies {CAMERA} none",
        )

    def test_ends_where_there_is_nothing_to_press(self):
        self.expect_problem(
            "^line 2: activate .*: the application offers no such button",
            f"install {CAMERA} 2.1 2105",
            f"activate {CAMERA}",
        )

    def test_ends_where_the_window_offers_by_itself_what_it_should_not(self):
        self.expect_problem(
            "^line 2: activate .*: the application offers 'Upgrade' by itself",
            f"install {CAMERA} 2.0 2004",
            f"activate {CAMERA}",
            outdated=True,
        )

    def test_ends_where_another_application_hears_something_else(self):
        self.expect_problem(
            "^line 3: expect finished 0 as Other: submit hears 'failed 4'",
            "bundle Other",
            f"activate {CAMERA} as Other",
            "expect finished 0 as Other",
        )

    def test_ends_where_another_application_hears_what_no_line_expects(self):
        self.expect_problem(
            r"^line 3: expect nothing: submit hears \['failed 4'\]",
            "bundle Other",
            f"activate {CAMERA} as Other",
            "expect nothing",
        )

    def test_ends_where_another_program_of_the_application_hears_something_else(self):
        self.expect_problem(
            "^line 3: expect finished 0: submit hears 'asked to replace 2.0/2004 by 2.1/2105'",
            f"install {CAMERA} 2.0 2004",
            f"activate {CAMERA} answering cancel",
            "expect finished 0",
        )


class EachScenario(unittest.TestCase):
    def test_is_played(self):
        with open(__file__) as text:
            played = {line.split('"')[1] for line in text if "self.play(\"" in line}
        self.assertEqual({path.stem for path in SCENARIOS.glob("*.scenario")}, played)


if __name__ == "__main__":
    unittest.main()
