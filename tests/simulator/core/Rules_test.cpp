// The rules as scenarios that are too small to be read for their own sake: one of each guarantee that no scenario file
// shows.

#include "tests/simulator/player/Played.h"

namespace simulator {
namespace {

struct Rule {
    const char* name;
    const char* scenario;
};

void PrintTo(const Rule& rule, std::ostream* out) {
    *out << rule.name;
}

const Rule rules[]{
    // Activation.
    {"AVersionThatDiffersInItsBuildAloneIsAnother", R"(
install CAMERA 2.1 2104
activate CAMERA answering cancel
expect asked to replace 2.1/2104 by 2.1/2105
expect failed 11)"},
    {"TheQuestionComesBeforeTheNewCopyIsStagedAndTakesItAlongWhenItGoes", R"(
install CAMERA 2.0 2004
activate CAMERA answering later
expect asked to replace 2.0/2004 by 2.1/2105
expect copies CAMERA 2.0/2004 activated enabled, 2.1/2105 validating
quit "Driver Manager"
expect requests none
expect copies CAMERA 2.0/2004 activated enabled)"},
    {"ACameraNeverWaitsForARestart", R"(
switch driver in-use
install CAMERA 2.0 2004
activate CAMERA
expect asked to replace 2.0/2004 by 2.1/2105
expect finished 0)"},
    {"AnIdleDriverIsStoppedAtOnce", R"(
install DRIVER 2.0 2004
activate DRIVER
expect asked to replace 2.0/2004 by 2.1/2105
expect finished 0
expect copies DRIVER 2.0/2004 terminated waiting to uninstall on reboot, 2.1/2105 activated enabled)"},
    {"ADriverThatIsSwitchedOffIsNotInUse", R"(
switch driver in-use
install DRIVER 2.0 2004 disabled
activate DRIVER
expect asked to replace 2.0/2004 by 2.1/2105
expect finished 0
expect copies DRIVER 2.0/2004 terminated waiting to uninstall on reboot, 2.1/2105 activated enabled)"},
    {"ADriverInUseThatIsReplacedByHandRunsOn", R"(
switch driver in-use
install DRIVER 2.0 2004
install DRIVER 2.1 2105
expect copies DRIVER 2.0/2004 terminating for upgrade via delegate, 2.1/2105 activated enabled)"},
    {"ADriverInUseThatIsReplacedOnApprovalRunsOn", R"(
switch driver in-use
switch upgrade asked
install DRIVER 2.0 2004
activate DRIVER
expect asked to replace 2.0/2004 by 2.1/2105
expect needs approval
allow DRIVER
expect finished 1)"},
    {"AnotherVersionTakesThePlaceOfTheOneThatWaits", R"(
install CAMERA 2.0 2004 waiting
activate CAMERA
expect asked to replace 2.0/2004 by 2.1/2105
expect needs approval
expect copies CAMERA 2.1/2105 activated waiting for user)"},
    {"OfTwoCopiesTheActivatedOneIsReplaced", R"(
install CAMERA 1.0 1000 waiting
install CAMERA 2.0 2004
activate CAMERA
expect asked to replace 2.0/2004 by 2.1/2105
expect finished 0
expect copies CAMERA 2.0/2004 terminated waiting to uninstall on reboot, 2.1/2105 activated enabled)"},
    {"AnApprovalOutlivesVersionsAndRestarts", R"(
activate CAMERA
expect needs approval
allow CAMERA
expect finished 0
restart
update "Driver Manager" to 2.2/2206
activate CAMERA
expect asked to replace 2.1/2105 by 2.2/2206
expect finished 0)"},
    {"InDeveloperModeTheVersionThatWaitsAsksForNothingButApproval", R"(
install CAMERA 2.1 2105 waiting
developer on
activate CAMERA
expect needs approval)"},
    // Requests.
    {"APropertiesRequestIsInNoOnesWay", R"(
fault next properties after 1s
properties CAMERA called first
activate CAMERA called second
properties CAMERA called third
expect needs approval to second
expect found 2.1/2105 waiting to third
advance 1s
expect found 2.1/2105 waiting to first)"},
    // Removal.
    {"ARemovalOfAnIdleDriverIsDoneAtOnce", R"(
switch authorization granted
install DRIVER 2.1 2105
deactivate DRIVER
expect finished 0
expect copies DRIVER 2.1/2105 terminated waiting to uninstall on reboot)"},
    {"ARemovalOfADriverInUseIsDoneWithTheRestart", R"(
switch authorization granted
switch driver in-use
install DRIVER 2.0 2004
install DRIVER 2.1 2105 waiting
deactivate DRIVER
expect finished 1
expect copies DRIVER 2.0/2004 terminated waiting to uninstall on reboot, 2.1/2105 terminated waiting to uninstall on reboot
restart
expect copies DRIVER none)"},
    {"ThereIsNothingToRemoveWhereEachCopyIsOnItsWayOut", R"(
install CAMERA 2.1 2105 uninstalling
deactivate CAMERA
expect failed 4)"},
    {"AnAdministratorWhoHadBeenAskedHasSaidYesOnceThatIsSwitchedOn", R"(
install CAMERA 2.1 2105
install DRIVER 2.1 2105
deactivate CAMERA
deactivate DRIVER
switch authorization asked
expect nothing
switch authorization granted
expect finished 0 to CAMERA
expect finished 0 to DRIVER)"},
    {"TheQuestionToTheAdministratorGoesWithTheApplication", R"(
install CAMERA 2.1 2105
deactivate CAMERA
expect request CAMERA authorization
quit "Driver Manager"
expect requests none
expect copies CAMERA 2.1/2105 activated enabled)"},
    {"AnAdministratorIsAskedAboutWhatTheProfileDoesNotLetRemove", R"(
profile allow-team.mobileconfig
install DRIVER 2.1 2105
deactivate DRIVER
expect request DRIVER authorization)"},
    // The machine.
    {"AStateHasAShortAndALongWording", R"(
install CAMERA 1.0 1000 terminated waiting to uninstall on reboot
install CAMERA 2.1 2105 activated waiting for user
expect copies CAMERA 1.0/1000 uninstalling, 2.1/2105 waiting
expect copy CAMERA 2.1/2105 activated waiting for user
properties CAMERA called first
expect found 1.0/1000 terminating for uninstall, 2.1/2105 activated waiting for user to first)"},
    {"WhatIsInstalledOnItsWayOutLeavesTheRestAlone", R"(
activate CAMERA
expect needs approval
install CAMERA 0 1 uninstalling
expect copies CAMERA 2.1/2105 activated waiting for user, 0/1 terminated waiting to uninstall on reboot
allow CAMERA
expect finished 0)"},
    {"WhatIsInstalledEndsWhatIsPending", R"(
activate CAMERA
expect needs approval
install CAMERA 0 1
expect failed 12)"},
    {"WhatIsInstalledEnabledOrDisabledIsApproved", R"(
install CAMERA 2.0 2004
install DRIVER 2.0 2004 disabled
activate CAMERA
activate DRIVER
expect asked to replace 2.0/2004 by 2.1/2105 to CAMERA
expect finished 0 to CAMERA
expect asked to replace 2.0/2004 by 2.1/2105 to DRIVER
expect finished 0 to DRIVER)"},
    {"WhatIsUninstalledGoesWithItsRequest", R"(
install CAMERA 2.1 2105
deactivate CAMERA
uninstall - CAMERA
expect failed 12)"},
    {"AResetTakesEverythingButTheSettings", R"(
switch denial silence
activate CAMERA called first
fault next any silent
activate DRIVER called second
expect needs approval to first
install DRIVER 2.1 2105
fault next any 8
reset
expect failed 11 to first
expect nothing
expect requests none
expect copies CAMERA none
expect copies DRIVER none
activate DRIVER
expect needs approval
deny DRIVER
expect nothing)"},
    {"ACopyThatLingeredGoesWithTheNextRestart", R"(
switch restart lingers
install CAMERA 0 1 uninstalling
install CAMERA 0 2 uninstalling
install DRIVER 0 3 uninstalling
restart
expect copies CAMERA 0/2 terminated waiting to uninstall on reboot
expect copies DRIVER 0/3 terminated waiting to uninstall on reboot
restart
expect copies CAMERA none)"},
    {"ADriverThatRanOnNeverLingers", R"(
switch restart lingers
switch driver in-use
install DRIVER 0 1
install DRIVER 0 2
restart
expect copies DRIVER 0/2 activated enabled)"},
    {"ARestartAnswersNothingAndLeavesWhatIsSwitchedOff", R"(
install DRIVER 0 1 disabled
activate CAMERA
expect needs approval
restart
expect nothing
expect requests none
expect copies CAMERA 2.1/2105 activated waiting for user
expect copies DRIVER 0/1 activated disabled)"},
    // Profiles.
    {"WhatTheProfileAllowsGoesOnAndTheRestWaits", R"(
activate CAMERA
activate DRIVER
expect needs approval to CAMERA
expect needs approval to DRIVER
profile forbid-the-rest.mobileconfig
expect finished 0 to DRIVER
expect copies CAMERA 2.1/2105 activated waiting for user)"},
    {"WhatTheProfileAllowsIsNotApprovedByTheUser", R"(
profile allow-team.mobileconfig
activate CAMERA
expect finished 0
profile --remove
update "Driver Manager" to 2.2/2206
activate CAMERA
expect asked to replace 2.1/2105 by 2.2/2206
expect needs approval)"},
    {"WhatTheProfileForbidsIsFoundWhenTheQuestionIsAnswered", R"(
install CAMERA 2.0 2004
activate CAMERA answering later
expect asked to replace 2.0/2004 by 2.1/2105
profile forbid-the-rest.mobileconfig
expect nothing
answer CAMERA replace
expect failed 10
expect copies CAMERA 2.0/2004 activated enabled)"},
    {"WhatTheProfileForbidsMayBeInstalledUnlessItWouldRun", R"(
profile forbid-the-rest.mobileconfig
install CAMERA 0 1 waiting
install CAMERA 0 2 disabled
expect copies CAMERA 0/1 activated waiting for user, 0/2 activated disabled)"},
    // Faults.
    {"AFaultBefallsTheNextRequestOfItsKindAlone", R"(
fault next activate 2 --domain NSPOSIXErrorDomain
fault next activate 8 broken
properties CAMERA
expect found none
activate CAMERA
expect failed 2 without description domain NSPOSIXErrorDomain
activate CAMERA
expect failed 8 saying broken
activate CAMERA
expect needs approval)"},
    {"AFaultForAnyRequestBefallsTheNextThatItCan", R"(
fault next any noprompt
fault next any hollow
fault next deactivate 9
properties CAMERA
expect found none
deactivate CAMERA
expect finished 0
activate CAMERA
expect nothing
allow CAMERA
expect finished 0
properties CAMERA
expect found 2.1/2105 enabled
deactivate CAMERA
expect failed 9)"},
    {"ASilentRequestIsNeverAnswered", R"(
fault next any silent
properties CAMERA called first
properties CAMERA called second
expect found none to second
expect request CAMERA silent
quit "Driver Manager"
expect requests none)"},
    {"ADelayedRequestIsLookedAtNoMomentTooEarly", R"(
switch authorization granted
install CAMERA 2.1 2105
fault next deactivate after 90s
deactivate CAMERA
expect request CAMERA delayed
advance 89999ms
expect nothing
expect copies CAMERA 2.1/2105 activated enabled
advance 1ms
expect finished 0)"},
    {"DelayedRequestsAreLookedAtInTheOrderOfTheirTimes", R"(
fault next properties after 2s
fault next properties after 1s
properties CAMERA called late
properties CAMERA called early
advance 1h
expect found none to early
expect found none to late)"},
    {"APromptIsHiddenOfTheVersionThatWaitsToo", R"(
install CAMERA 2.1 2105 waiting
fault next activate noprompt
activate CAMERA
expect nothing
allow CAMERA
expect finished 0)"},
    {"AHollowRemovalLeavesTheCopy", R"(
install CAMERA 2.1 2105
fault next deactivate hollow
deactivate CAMERA
expect finished 0
expect copies CAMERA 2.1/2105 activated enabled)"},
    {"ADelayedRequestThatIsSupersededSaysSoAtOnce", R"(
fault next activate after 1h
activate CAMERA called first
activate CAMERA called second
expect failed 12 to first
expect needs approval to second)"},
    // Checks.
    {"TheApplicationMayLieInAnyOfTheFoldersThatWereSet", R"(
applications /elsewhere /tmp/build
activate CAMERA
expect failed 3
move "Driver Manager" to "/tmp/build/Driver Manager.app"
activate CAMERA
expect needs approval
applications /
activate CAMERA
expect failed 12
expect needs approval)"},
    {"AChangedExtensionFailsBeforeTheQuestion", R"(
install CAMERA 2.0 2004
damage CAMERA.systemextension
activate CAMERA
expect failed 8
expect copies CAMERA 2.0/2004 activated enabled)"},
    {"TheVersionThatWaitsIsCheckedAgain", R"(
install CAMERA 2.1 2105 waiting
damage CAMERA.systemextension
activate CAMERA
expect failed 8
carry CAMERA.systemextension 2.1/2105 without usage-description
activate CAMERA
expect failed 9
profile forbid-the-rest.mobileconfig
carry CAMERA.systemextension 2.1/2105
activate CAMERA
expect failed 10
expect copies CAMERA 2.1/2105 activated waiting for user)"},
};

class TheRules : public testing::TestWithParam<Rule> {};

TEST_P(TheRules, Hold) {
    EXPECT_EQ(player::played(GetParam().scenario), "as it says");
}

INSTANTIATE_TEST_SUITE_P(, TheRules, testing::ValuesIn(rules), [](const auto& which) { return which.param.name; });

/// The very version that the application carries is activated, or was and is switched off, or is so in developer mode.
TEST(TheRulesOfChecks, HoldForWhatIsThereAlready) {
    for (const std::string state : {"enabled", "disabled"}) {
        for (const std::string mode : {"developer on\n", "developer off\n"}) {
            const std::string before = "install CAMERA 2.1 2105 " + state + "\n" + mode;
            const std::string after = "\nexpect copies CAMERA 2.1/2105 activated " + state;
            const auto fails = [&](const std::string& change, const std::string& code) {
                const std::string text = before + change + "\nactivate CAMERA\nexpect failed " + code + after;
                EXPECT_EQ(player::played(text), "as it says") << text;
            };
            fails("damage CAMERA.systemextension", "8");
            fails("carry CAMERA.systemextension 2.1/2105 without usage-description", "9");
            fails("profile forbid-the-rest.mobileconfig", "10");
        }
    }
}

} // namespace
} // namespace simulator
