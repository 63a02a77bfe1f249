#include "tests/simulator/sample/SampleMac.h"

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AnActivation : public testing::Test {
protected:
    SampleMac mac;
};

TEST_F(AnActivation, SaysNothingInsideTheSubmission) {
    ASSERT_FALSE(mac.machine().submit({"client", "a", sampleApplication, RequestKind::activation, camera}));
    EXPECT_THAT(mac.machine().takeOutbox().answers, IsEmpty());
}

TEST_F(AnActivation, ValidatesThenStagesThenWaitsForTheUser) {
    ASSERT_FALSE(mac.machine().submit({"client", "a", sampleApplication, RequestKind::activation, camera}));
    EXPECT_THAT(mac.copies(), IsEmpty());
    mac.machine().step();
    EXPECT_THAT(mac.copies(), ElementsAre("2105 validating"));
    mac.machine().step();
    EXPECT_THAT(mac.copies(), ElementsAre("2105 staging"));
    mac.machine().step();
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated waiting for user"));
    EXPECT_FALSE(mac.machine().step());
}

TEST_F(AnActivation, NeedsApprovalAndFinishesOnceAllowed) {
    mac.activate("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval"));
    mac.mustDo(mac.machine().allow(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated enabled"));
}

TEST_F(AnActivation, WaitsWithoutLimit) {
    mac.activate("a");
    mac.heard();
    mac.mustDo(mac.machine().advance(std::int64_t{1000} * 3600 * 24 * 365));
    EXPECT_THAT(mac.heard(), IsEmpty());
    EXPECT_EQ(mac.machine().requests().size(), 1U);
}

TEST_F(AnActivation, FailsWithElevenWhenDenied) {
    mac.activate("a");
    mac.mustDo(mac.machine().deny(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval", "a: failed 11"));
    EXPECT_THAT(mac.copies(), IsEmpty());
}

TEST_F(AnActivation, IsNeverAnsweredWhenDeniedOnASilentSystem) {
    mac.set("denial", "silence");
    mac.activate("a");
    mac.mustDo(mac.machine().deny(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval"));
    EXPECT_THAT(mac.copies(), IsEmpty());
}

TEST_F(AnActivation, OfTheActiveVersionFinishesWithoutQuestionOrApproval) {
    mac.install("2105", "enabled");
    setVersion(mac.application(), "0.0", "2105");
    mac.activate("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated enabled"));
}

TEST_F(AnActivation, OfTheVersionThatIsSwitchedOffFinishesAndLeavesItOff) {
    mac.install("2105", "disabled");
    setVersion(mac.application(), "0.0", "2105");
    mac.activate("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated disabled"));
}

TEST_F(AnActivation, OfTheActiveVersionAsksAllTheSameInDeveloperMode) {
    mac.activate("a");
    mac.mustDo(mac.machine().allow(camera));
    mac.heard();
    mac.machine().setDeveloperMode(true);
    mac.activate("b");
    EXPECT_THAT(mac.heard(), ElementsAre("b: replace 2105 by 2105?"));
    mac.answer("b", true);
    EXPECT_THAT(mac.heard(), ElementsAre("b: finished 0"));
    EXPECT_THAT(mac.copies(), ElementsAre("2105 terminated waiting to uninstall on reboot", "2105 activated enabled"));
}

TEST_F(AnActivation, OfAVersionThatDiffersInTheShortTextAloneAsksForReplacement) {
    mac.install("2105", "enabled");
    mac.activate("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: replace 2105 by 2105?"));
}

TEST_F(AnActivation, AsksBeforeItStages) {
    mac.install("2004", "enabled");
    mac.activate("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: replace 2004 by 2105?"));
    EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled", "2105 validating"));
}

TEST_F(AnActivation, OfAnApprovedExtensionReplacesWithoutApproval) {
    mac.install("2004", "enabled");
    mac.activate("a");
    mac.answer("a", true);
    EXPECT_THAT(mac.heard(), ElementsAre("a: replace 2004 by 2105?", "a: finished 0"));
    EXPECT_THAT(mac.copies(), ElementsAre("2004 terminated waiting to uninstall on reboot", "2105 activated enabled"));
}

TEST_F(AnActivation, MayGoBackToAnOlderVersion) {
    mac.install("9999", "enabled");
    mac.activate("a");
    mac.answer("a", true);
    EXPECT_THAT(mac.heard(), ElementsAre("a: replace 9999 by 2105?", "a: finished 0"));
}

TEST_F(AnActivation, FailsWithElevenWhenTheQuestionIsAnsweredCancel) {
    mac.install("2004", "enabled");
    mac.activate("a");
    mac.answer("a", false);
    EXPECT_THAT(mac.heard(), ElementsAre("a: replace 2004 by 2105?", "a: failed 11"));
    EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled"));
}

TEST_F(AnActivation, ThatAsksAgainLetsTheNewCopyWaitBesideTheOldOne) {
    mac.set("upgrade", "asked");
    mac.install("2004", "enabled");
    mac.activate("a");
    mac.answer("a", true);
    EXPECT_THAT(mac.heard(), ElementsAre("a: replace 2004 by 2105?", "a: needs approval"));
    EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled", "2105 activated waiting for user"));
    mac.mustDo(mac.machine().allow(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
    EXPECT_THAT(mac.copies(), ElementsAre("2004 terminated waiting to uninstall on reboot", "2105 activated enabled"));
}

TEST_F(AnActivation, OfADriverInUseLetsTheOldOneRunOnUntilTheRestart) {
    mac.set("driver", "in-use");
    mac.install("2004", "enabled", driver);
    mac.activate("a", driver);
    mac.answer("a", true);
    EXPECT_THAT(mac.heard(), ElementsAre("a: replace 2004 by 2105?", "a: finished 1"));
    EXPECT_THAT(mac.copies(driver), ElementsAre("2004 terminating for upgrade via delegate", "2105 activated enabled"));
    mac.machine().restart();
    EXPECT_THAT(mac.copies(driver), ElementsAre("2105 activated enabled"));
}

TEST_F(AnActivation, OfAnIdleDriverStopsTheOldOneAtOnce) {
    mac.install("2004", "enabled", driver);
    mac.activate("a", driver);
    mac.answer("a", true);
    EXPECT_THAT(mac.heard(), ElementsAre("a: replace 2004 by 2105?", "a: finished 0"));
    EXPECT_THAT(mac.copies(driver),
                ElementsAre("2004 terminated waiting to uninstall on reboot", "2105 activated enabled"));
}

TEST_F(AnActivation, OfACameraNeverWaitsForARestart) {
    mac.set("driver", "in-use");
    mac.install("2004", "enabled");
    mac.activate("a");
    mac.answer("a", true);
    EXPECT_THAT(mac.heard(), ElementsAre("a: replace 2004 by 2105?", "a: finished 0"));
}

TEST_F(AnActivation, OfTheVersionThatWaitsNeedsApprovalWithoutAQuestion) {
    mac.activate("a");
    mac.machine().clientLeft("client");
    mac.activate("b");
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval", "b: needs approval"));
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated waiting for user"));
    mac.mustDo(mac.machine().allow(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("b: finished 0"));
}

TEST_F(AnActivation, OfAnotherVersionTakesThePlaceOfTheOneThatWaits) {
    mac.install("2004", "waiting");
    mac.activate("a");
    mac.answer("a", true);
    EXPECT_THAT(mac.heard(), ElementsAre("a: replace 2004 by 2105?", "a: needs approval"));
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated waiting for user"));
}

TEST_F(AnActivation, SupersedesTheOlderOneForTheSameExtension) {
    mac.activate("a");
    mac.activate("b");
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval", "a: failed 12", "b: needs approval"));
}

TEST_F(AnActivation, FailsItselfOnASystemThatKeepsTheOlderRequest) {
    mac.set("second", "fails");
    mac.activate("a");
    mac.activate("b");
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval", "b: failed 12"));
    mac.mustDo(mac.machine().allow(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
}

TEST_F(AnActivation, ThatFailsForAnOlderOneIsNotToldOfALaterOne) {
    mac.set("second", "fails");
    mac.activate("a");
    mac.activate("b");
    EXPECT_EQ(std::get<Failure>(mac.answers().back().body),
              failureWith(12, "An earlier request for the same extension is still open."));
}

TEST_F(AnActivation, LeavesThatOfAnotherExtensionAlone) {
    mac.activate("a", camera);
    mac.activate("b", driver);
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval", "b: needs approval"));
}

TEST_F(AnActivation, InterleavesWithAnother) {
    ASSERT_FALSE(mac.machine().submit({"client", "a", sampleApplication, RequestKind::activation, camera}));
    ASSERT_FALSE(mac.machine().submit({"client", "b", sampleApplication, RequestKind::activation, driver}));
    mac.machine().step();
    mac.machine().step();
    EXPECT_THAT(mac.copies(camera), ElementsAre("2105 validating"));
    EXPECT_THAT(mac.copies(driver), ElementsAre("2105 validating"));
}

TEST_F(AnActivation, OfACopyThatIsOnItsWayOutBeginsAnew) {
    mac.install("2105", "uninstalling");
    mac.activate("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval"));
    EXPECT_THAT(mac.copies(),
                ElementsAre("2105 terminated waiting to uninstall on reboot", "2105 activated waiting for user"));
}

TEST_F(AnActivation, GoesOnWithoutTheClientUntilItWaits) {
    ASSERT_FALSE(mac.machine().submit({"client", "a", sampleApplication, RequestKind::activation, camera}));
    mac.machine().step();
    mac.machine().clientLeft("client");
    mac.rest();
    EXPECT_THAT(mac.heard(), IsEmpty());
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated waiting for user"));
    EXPECT_THAT(mac.machine().requests(), IsEmpty());
}

TEST_F(AnActivation, EndsWithTheClientThatWasAskedForReplacement) {
    mac.install("2004", "enabled");
    mac.activate("a");
    mac.machine().clientLeft("client");
    EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled"));
    EXPECT_THAT(mac.machine().requests(), IsEmpty());
}

TEST_F(AnActivation, FailsWithTenWhereverAProfileThatForbidsItFindsIt) {
    Profile profile;
    profile.allowsUserOverrides = false;
    for (int steps = 0; steps < 3; ++steps) {
        SampleMac another;
        ASSERT_FALSE(another.machine().submit({"client", "a", sampleApplication, RequestKind::activation, camera}));
        for (int step = 0; step < steps; ++step)
            another.machine().step();
        another.machine().setProfile(profile);
        another.rest();
        EXPECT_THAT(another.heard(), ElementsAre("a: failed 10")) << "after " << steps << " steps";
        EXPECT_THAT(another.copies(), IsEmpty());
    }
}

TEST_F(AnActivation, FailsWithTenWhenAProfileForbidsItWhileTheQuestionIsOpen) {
    mac.install("2004", "enabled");
    mac.activate("a");
    Profile profile;
    profile.allowsUserOverrides = false;
    mac.machine().setProfile(profile);
    mac.rest();
    EXPECT_THAT(mac.heard(), ElementsAre("a: replace 2004 by 2105?"));
    mac.answer("a", true);
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 10"));
    EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled"));
}

TEST_F(AnActivation, AnswersNoOtherClient) {
    mac.activate("a");
    mac.mustDo(mac.machine().allow(camera));
    for (const Answer& answer : mac.answers())
        EXPECT_EQ(answer.client, "client");
}

} // namespace
} // namespace simulator
