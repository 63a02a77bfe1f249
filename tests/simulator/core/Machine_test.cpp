#include "tests/simulator/sample/SampleMac.h"

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::Optional;

constexpr auto nothingWaiting = Refusal::Kind::nothingWaiting;
constexpr auto unknownIdentifier = Refusal::Kind::unknownIdentifier;
constexpr auto invalidArgument = Refusal::Kind::invalidArgument;
constexpr auto limitExceeded = Refusal::Kind::limitExceeded;
constexpr auto forbiddenByProfile = Refusal::Kind::forbiddenByProfile;

auto refusedAs(Refusal::Kind kind) {
    return Optional(Field("kind", &Refusal::kind, kind));
}

class AMachine : public testing::Test {
protected:
    SampleMac mac;
    Machine& machine() { return mac.machine(); }
};

// The person.

TEST_F(AMachine, HasNothingToAllowWhereNothingWaits) {
    EXPECT_THAT(machine().allow(camera), refusedAs(nothingWaiting));
    EXPECT_THAT(machine().deny(camera), refusedAs(nothingWaiting));
    EXPECT_THAT(machine().authorize(camera), refusedAs(nothingWaiting));
    EXPECT_THAT(machine().refuse(camera), refusedAs(nothingWaiting));
    EXPECT_THAT(machine().disable(camera), refusedAs(nothingWaiting));
    EXPECT_THAT(machine().enable(camera), refusedAs(nothingWaiting));
    EXPECT_THAT(machine().uninstall("-", camera), refusedAs(nothingWaiting));
}

TEST_F(AMachine, DoesNotKnowAnExtensionOfNoBundleAndNoCopy) {
    EXPECT_THAT(machine().allow("com.example.unknown"), refusedAs(unknownIdentifier));
    EXPECT_THAT(machine().allow(""), refusedAs(unknownIdentifier));
    EXPECT_THAT(machine().install("com.example.unknown", {"1", "1"}, "enabled"), refusedAs(unknownIdentifier));
}

TEST_F(AMachine, KnowsAnExtensionWhoseCopyAndBundleAreGone) {
    mac.install("1", "uninstalling");
    machine().restart();
    mac.disk().remove(sampleApplication);
    EXPECT_THAT(mac.copies(), IsEmpty());
    EXPECT_TRUE(machine().knows(camera));
    EXPECT_FALSE(machine().knows(driver));
}

TEST_F(AMachine, KnowsTheExtensionsOfEveryBundleThatAsked) {
    BundleOnDisk bundle = sampleBundle();
    bundle.path = "/Downloads/Other.app";
    bundle.extensions[0].identifier = "com.example.downloaded";
    mac.disk().put(bundle);
    EXPECT_FALSE(machine().knows("com.example.downloaded"));
    mac.mustDo(machine().submit({"client", "a", bundle.path, RequestKind::properties, camera}));
    EXPECT_THAT(machine().identifiers(), ElementsAre("com.example.downloaded", driver, camera));
}

TEST_F(AMachine, SwitchesAnEnabledExtensionOffAndOnAgain) {
    mac.install("1", "enabled");
    mac.mustDo(machine().disable(camera));
    EXPECT_THAT(mac.copies(), ElementsAre("1 activated disabled"));
    mac.mustDo(machine().enable(camera));
    EXPECT_THAT(mac.copies(), ElementsAre("1 activated enabled"));
}

TEST_F(AMachine, AllowsWithoutAnApplicationThatListens) {
    mac.activate("a");
    machine().clientLeft("client");
    mac.mustDo(machine().allow(camera));
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated enabled"));
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval"));
}

TEST_F(AMachine, KeepsTheApprovalAcrossVersionsAndRestarts) {
    mac.activate("a");
    mac.mustDo(machine().allow(camera));
    machine().restart();
    mac.comeBack();
    setVersion(mac.application(), "2.2", "2200");
    mac.heard();
    mac.activate("b");
    mac.answer("b", true);
    EXPECT_THAT(mac.heard(), ElementsAre("b: replace 2105 by 2200?", "b: finished 0"));
}

// The restart.

TEST_F(AMachine, EndsEveryRequestUnansweredWhenItRestarts) {
    mac.activate("a");
    mac.heard();
    machine().restart();
    mac.rest();
    EXPECT_TRUE(mac.restarted());
    EXPECT_THAT(mac.heard(), IsEmpty());
    EXPECT_THAT(machine().requests(), IsEmpty());
}

TEST_F(AMachine, LetsWaitingCopiesWaitOnThroughARestart) {
    mac.activate("a");
    machine().restart();
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated waiting for user"));
}

TEST_F(AMachine, LeavesAnExtensionInactiveThatWasActivatedThenDeactivatedThenRestarted) {
    mac.activate("a");
    mac.mustDo(machine().allow(camera));
    mac.deactivate("b");
    mac.mustDo(machine().authorize(camera));
    machine().restart();
    EXPECT_THAT(mac.copies(), IsEmpty());
}

TEST_F(AMachine, FinishesWhatItHadBegunBeforeItRestarts) {
    ASSERT_FALSE(machine().submit({"client", "a", sampleApplication, RequestKind::activation, camera}));
    ASSERT_FALSE(machine().submit({"client", "b", sampleApplication, RequestKind::activation, driver}));
    machine().step();
    machine().step();
    machine().step();
    ASSERT_THAT(mac.copies(camera), ElementsAre("2105 staging"));
    ASSERT_THAT(mac.copies(driver), ElementsAre("2105 validating"));
    machine().restart();
    EXPECT_THAT(mac.copies(camera), ElementsAre("2105 activated waiting for user"));
    EXPECT_THAT(mac.copies(driver), IsEmpty());
}

TEST_F(AMachine, LetsOneTerminatedCopyLingerThroughOneRestartWhereSwitchedOn) {
    mac.set("restart", "lingers");
    mac.install("1", "uninstalling");
    mac.install("2", "uninstalling");
    machine().restart();
    EXPECT_THAT(mac.copies(), ElementsAre("2 terminated waiting to uninstall on reboot"));
    machine().restart();
    EXPECT_THAT(mac.copies(), IsEmpty());
}

// The service comes back.

TEST_F(AMachine, ForgetsOpenRequestsWhenItComesBackButKeepsTheCopies) {
    mac.activate("a");
    mac.comeBack();
    EXPECT_THAT(machine().requests(), IsEmpty());
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated waiting for user"));
}

TEST_F(AMachine, EndsARemovalThatItHadBegunWhenItComesBack) {
    mac.set("authorization", "granted");
    mac.install("1", "enabled");
    ASSERT_FALSE(machine().submit({"client", "a", sampleApplication, RequestKind::deactivation, camera}));
    machine().step();
    mac.comeBack();
    EXPECT_THAT(mac.copies(), ElementsAre("1 terminated waiting to uninstall on reboot"));
}

TEST_F(AMachine, DropsACopyThatAwaitedTheReplacementAnswerWhenItComesBack) {
    mac.install("1", "enabled");
    mac.activate("a");
    mac.comeBack();
    EXPECT_THAT(mac.copies(), ElementsAre("1 activated enabled"));
}

// Reset, install, uninstall.

TEST_F(AMachine, HasNothingInstalledAfterAReset) {
    mac.activate("a");
    mac.install("1", "enabled", driver);
    machine().reset();
    mac.rest();
    EXPECT_THAT(mac.copies(camera), IsEmpty());
    EXPECT_THAT(mac.copies(driver), IsEmpty());
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval", "a: failed 11"));
    EXPECT_THAT(machine().state().approvals, IsEmpty());
}

TEST_F(AMachine, KeepsItsSettingsThroughAReset) {
    mac.set("denial", "silence");
    machine().setDeveloperMode(true);
    const Settings before = machine().state().settings;
    machine().reset();
    EXPECT_EQ(machine().state().settings, before);
}

TEST_F(AMachine, RecordsTheApprovalOfAnInstalledEnabledCopy) {
    mac.install("2004", "enabled");
    mac.activate("a");
    mac.answer("a", true);
    EXPECT_THAT(mac.heard(), ElementsAre("a: replace 2004 by 2105?", "a: finished 0"));
}

TEST_F(AMachine, RecordsNoApprovalOfAnInstalledWaitingCopy) {
    mac.install("2004", "waiting");
    EXPECT_THAT(machine().state().approvals, IsEmpty());
}

TEST_F(AMachine, TakesTheTeamAndNameOfAnInstalledCopyFromTheBundle) {
    mac.install("1", "enabled");
    const Copy& copy = machine().state().copies.begin()->second;
    EXPECT_EQ(copy.extension, (Extension{sampleTeam, camera, "Camera", Category::camera, "com.kelvra.driver-manager"}));
}

TEST_F(AMachine, NeverHasTwoEnabledCopiesHoweverTheyAreInstalled) {
    mac.install("1", "enabled");
    mac.install("2", "disabled");
    mac.install("3", "enabled");
    EXPECT_THAT(mac.copies(), ElementsAre("1 terminated waiting to uninstall on reboot",
                                          "2 terminated waiting to uninstall on reboot", "3 activated enabled"));
}

TEST_F(AMachine, InstallsOnlyInAStateInWhichACopyStays) {
    EXPECT_THAT(machine().install(camera, {"1", "1"}, "preparing"), refusedAs(invalidArgument));
    EXPECT_THAT(machine().install(camera, {"1", "1"}, "sleeping"), refusedAs(invalidArgument));
    EXPECT_THAT(machine().install(camera, {"1", "1\n"}, "enabled"), refusedAs(invalidArgument));
}

TEST_F(AMachine, UninstallsForTheTeamOrForAny) {
    mac.install("1", "enabled");
    EXPECT_THAT(machine().uninstall("OTHER00001", camera), refusedAs(nothingWaiting));
    mac.mustDo(machine().uninstall(sampleTeam, camera));
    EXPECT_THAT(mac.copies(), ElementsAre("1 terminated waiting to uninstall on reboot"));
    mac.install("2", "enabled");
    mac.mustDo(machine().uninstall("-", camera));
    EXPECT_THAT(machine().state().approvals, IsEmpty());
}

// The profile.

TEST_F(AMachine, ActivatesWithoutApprovalWhatTheProfileAllows) {
    Profile profile;
    profile.allowedTeams = {sampleTeam};
    machine().setProfile(profile);
    mac.activate("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
    EXPECT_THAT(machine().state().approvals, IsEmpty());
}

TEST_F(AMachine, CompletesWhatWaitsWhenAProfileAllowsIt) {
    mac.activate("a");
    mac.activate("b", driver);
    Profile profile;
    profile.allowedExtensions[sampleTeam] = {camera};
    machine().setProfile(profile);
    mac.rest();
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval", "b: needs approval", "a: finished 0"));
    EXPECT_THAT(mac.copies(driver), ElementsAre("2105 activated waiting for user"));
}

/// A profile that allows nothing and leaves nothing to the user.
Profile forbidding() {
    Profile profile;
    profile.allowsUserOverrides = false;
    return profile;
}

TEST_F(AMachine, LetsWhatTheProfileForbidsWaitAndNobodyAllowIt) {
    mac.activate("a");
    machine().setProfile(forbidding());
    mac.rest();
    EXPECT_THAT(machine().allow(camera), refusedAs(forbiddenByProfile));
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated waiting for user"));
    EXPECT_THAT(machine().state().approvals, IsEmpty());
    machine().setProfile({});
    mac.mustDo(machine().allow(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval", "a: finished 0"));
}

TEST_F(AMachine, LetsWhatTheProfileForbidsRunOnAndNobodySwitchItOnAgain) {
    mac.install("1", "enabled");
    machine().setProfile(forbidding());
    machine().restart();
    mac.comeBack();
    EXPECT_THAT(mac.copies(), ElementsAre("1 activated enabled"));
    mac.mustDo(machine().disable(camera));
    EXPECT_THAT(machine().enable(camera), refusedAs(forbiddenByProfile));
    EXPECT_THAT(mac.copies(), ElementsAre("1 activated disabled"));
    machine().setProfile({});
    mac.mustDo(machine().enable(camera));
    EXPECT_THAT(mac.copies(), ElementsAre("1 activated enabled"));
}

TEST_F(AMachine, InstallsNothingEnabledThatTheProfileForbids) {
    machine().setProfile(forbidding());
    EXPECT_THAT(machine().install(camera, {"1", "1"}, "enabled"), refusedAs(forbiddenByProfile));
    EXPECT_THAT(mac.copies(), IsEmpty());
    mac.install("1", "waiting");
    mac.install("2", "disabled");
    EXPECT_THAT(mac.copies(), ElementsAre("1 activated waiting for user", "2 activated disabled"));
}

TEST_F(AMachine, LetsTheUserDenyWhatTheProfileForbids) {
    mac.activate("a");
    machine().setProfile(forbidding());
    mac.mustDo(machine().deny(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval", "a: failed 11"));
    EXPECT_THAT(mac.copies(), IsEmpty());
}

/// The machine goes down, or its service dies, when a copy of an approved extension is staged and not yet enabled, and
/// a profile forbids it.
class AMachineThatStagesWhatIsForbidden : public AMachine {
protected:
    AMachineThatStagesWhatIsForbidden() {
        mac.install("2004", "enabled");
        mac.activate("a");
        EXPECT_EQ(machine().answerReplacement("client", "a", true), done);
        machine().setProfile(forbidding());
        EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled", "2105 staging"));
    }
};

TEST_F(AMachineThatStagesWhatIsForbidden, FailsWithTen) {
    mac.rest();
    EXPECT_THAT(mac.heard(), ElementsAre("a: replace 2004 by 2105?", "a: failed 10"));
    EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled"));
}

TEST_F(AMachineThatStagesWhatIsForbidden, DropsItWhenItRestarts) {
    machine().restart();
    EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled"));
}

TEST_F(AMachineThatStagesWhatIsForbidden, DropsItWhenItComesBack) {
    mac.comeBack();
    EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled"));
}

// Faults.

TEST_F(AMachine, FailsTheNextRequestOfAKindAsOrderedAndNoOther) {
    Fault fault;
    fault.request = RequestKind::activation;
    fault.failure = {"NSPOSIXErrorDomain", 2, ""};
    mac.mustDo(machine().orderFault(fault));
    mac.properties("a");
    mac.activate("b");
    mac.activate("c");
    EXPECT_THAT(mac.heard(), ElementsAre("a: found", "b: failed 2", "c: needs approval"));
    EXPECT_EQ(std::get<Failure>(mac.answers()[1].body), fault.failure);
}

TEST_F(AMachine, NeverAnswersTheNextRequestOfAnyKindWhenSilenceWasOrdered) {
    Fault fault;
    fault.kind = Fault::Kind::silent;
    mac.mustDo(machine().orderFault(fault));
    mac.properties("a");
    mac.properties("b");
    EXPECT_THAT(mac.heard(), ElementsAre("b: found"));
}

TEST_F(AMachine, AnswersLaterByItsClockWhenADelayWasOrdered) {
    mac.set("authorization", "granted");
    mac.install("1", "enabled");
    Fault fault;
    fault.kind = Fault::Kind::delay;
    fault.request = RequestKind::deactivation;
    fault.milliseconds = 90000;
    mac.mustDo(machine().orderFault(fault));
    mac.deactivate("a");
    mac.mustDo(machine().advance(89999));
    EXPECT_THAT(mac.heard(), IsEmpty());
    mac.mustDo(machine().advance(1));
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
}

TEST_F(AMachine, FinishesHollowWhereThatWasOrdered) {
    Fault fault;
    fault.kind = Fault::Kind::hollow;
    mac.mustDo(machine().orderFault(fault));
    mac.properties("a");
    mac.activate("b");
    mac.properties("c");
    EXPECT_THAT(mac.heard(), ElementsAre("a: found", "b: finished 0", "c: found"));
}

TEST_F(AMachine, WaitsForTheUserWithoutSayingSoWhereThatWasOrdered) {
    Fault fault;
    fault.kind = Fault::Kind::noprompt;
    mac.mustDo(machine().orderFault(fault));
    mac.activate("a");
    EXPECT_THAT(mac.heard(), IsEmpty());
    mac.mustDo(machine().allow(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
}

TEST_F(AMachine, KeepsThePromptOfTheVersionThatWaitsAwayToo) {
    mac.install("2105", "waiting");
    setVersion(mac.application(), "0.0", "2105");
    Fault fault;
    fault.kind = Fault::Kind::noprompt;
    mac.mustDo(machine().orderFault(fault));
    mac.activate("a");
    EXPECT_THAT(mac.heard(), IsEmpty());
    mac.mustDo(machine().allow(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
}

TEST_F(AMachine, DiesInTheMiddleOfARequestWhereThatWasOrdered) {
    Fault fault;
    fault.kind = Fault::Kind::crash;
    mac.mustDo(machine().orderFault(fault));
    ASSERT_FALSE(machine().submit({"client", "a", sampleApplication, RequestKind::activation, camera}));
    machine().step();
    const Outbox outbox = machine().takeOutbox();
    EXPECT_TRUE(outbox.crashed);
    EXPECT_THAT(outbox.answers, IsEmpty());
    EXPECT_THAT(machine().state().faults, IsEmpty());
    mac.comeBack();
    EXPECT_THAT(mac.copies(), IsEmpty());
}

TEST_F(AMachine, TakesNoFaultThatCannotBefall) {
    Fault fault;
    fault.kind = Fault::Kind::noprompt;
    fault.request = RequestKind::properties;
    EXPECT_THAT(machine().orderFault(fault), refusedAs(invalidArgument));
    fault = {};
    fault.kind = Fault::Kind::delay;
    fault.milliseconds = -1;
    EXPECT_THAT(machine().orderFault(fault), refusedAs(invalidArgument));
}

// Switches and the clock.

TEST_F(AMachine, KnowsOnlyItsSwitchesAndTheirValues) {
    EXPECT_THAT(machine().setSwitch("nonsense", "on"), refusedAs(invalidArgument));
    EXPECT_THAT(machine().setSwitch("denial", "maybe"), refusedAs(invalidArgument));
    mac.set("denial", "silence");
    EXPECT_EQ(machine().state().settings.valueOf(Switch::denial), "silence");
    mac.set("denial", "error");
    EXPECT_EQ(machine().state().settings, Settings{});
}

TEST_F(AMachine, LetsTimePassOnlyForwards) {
    mac.mustDo(machine().advance(5));
    EXPECT_THAT(machine().advance(-1), refusedAs(invalidArgument));
    EXPECT_THAT(machine().advance(std::numeric_limits<std::int64_t>::max()), refusedAs(invalidArgument));
    EXPECT_EQ(machine().state().clock, 5);
}

TEST_F(AMachine, TakesOnlyAbsoluteApplicationsFolders) {
    EXPECT_THAT(machine().setApplicationsFolders({"relative"}), refusedAs(invalidArgument));
    EXPECT_THAT(machine().setApplicationsFolders({""}), refusedAs(invalidArgument));
    EXPECT_THAT(machine().setApplicationsFolders(std::vector<std::string>(65, "/a")), refusedAs(limitExceeded));
}

// Malformed and flooding requests.

TEST_F(AMachine, RefusesAMalformedSubmission) {
    const auto submit = [&](const std::string& token, const std::string& identifier) {
        return machine().submit({"client", token, sampleApplication, RequestKind::activation, identifier});
    };
    EXPECT_THAT(submit("", camera), refusedAs(invalidArgument));
    EXPECT_THAT(submit("a\nb", camera), refusedAs(invalidArgument));
    EXPECT_THAT(submit(std::string(129, 'a'), camera), refusedAs(invalidArgument));
    EXPECT_THAT(submit("a", std::string(256, 'a')), refusedAs(invalidArgument));
    EXPECT_EQ(submit("a", ""), done);
}

TEST_F(AMachine, RefusesATokenThatNamesAnOpenRequestOfThatClient) {
    mac.activate("a");
    EXPECT_THAT(machine().submit({"client", "a", "", RequestKind::properties, camera}), refusedAs(invalidArgument));
    EXPECT_EQ(machine().submit({"other", "a", "", RequestKind::properties, camera}), done);
}

TEST_F(AMachine, RefusesAFloodOfOneClientAndServesTheOthers) {
    for (int i = 0; i < 256; ++i) {
        ASSERT_EQ(machine().submit({"flood", std::to_string(i), "", RequestKind::properties, camera}), done);
    }
    EXPECT_THAT(machine().submit({"flood", "more", "", RequestKind::properties, camera}), refusedAs(limitExceeded));
    mac.properties("a");
    EXPECT_EQ(mac.heard().back(), "a: found");
}

TEST_F(AMachine, TakesNoAnswerToAQuestionThatIsNotOpen) {
    EXPECT_THAT(machine().answerReplacement("client", "a", true), refusedAs(invalidArgument));
    mac.activate("a");
    EXPECT_THAT(machine().answerReplacement("client", "a", true), refusedAs(invalidArgument));
}

TEST_F(AMachine, TakesTheAnswerOnlyFromTheClientThatWasAsked) {
    mac.install("2004", "enabled");
    mac.activate("a");
    EXPECT_THAT(machine().answerReplacement("other", "a", true), refusedAs(invalidArgument));
}

} // namespace
} // namespace simulator
