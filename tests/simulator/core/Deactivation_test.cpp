#include "tests/simulator/sample/SampleMac.h"

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ADeactivation : public testing::Test {
protected:
    SampleMac mac;
};

class AnAuthorizedDeactivation : public ADeactivation {
protected:
    AnAuthorizedDeactivation() { mac.set("authorization", "granted"); }
};

TEST_F(AnAuthorizedDeactivation, TerminatesTheCopyUntilTheRestart) {
    mac.install("2105", "enabled");
    mac.deactivate("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
    EXPECT_THAT(mac.copies(), ElementsAre("2105 terminated waiting to uninstall on reboot"));
    mac.machine().restart();
    EXPECT_THAT(mac.copies(), IsEmpty());
}

TEST_F(AnAuthorizedDeactivation, TerminatesBeforeItFinishes) {
    mac.install("2105", "enabled");
    ASSERT_FALSE(mac.machine().submit({"client", "a", sampleApplication, RequestKind::deactivation, camera}));
    mac.machine().step();
    EXPECT_THAT(mac.copies(), ElementsAre("2105 terminating for uninstall"));
    EXPECT_THAT(mac.heard(), IsEmpty());
}

TEST_F(AnAuthorizedDeactivation, OfADriverInUseCompletesAfterTheRestart) {
    mac.set("driver", "in-use");
    mac.install("2105", "enabled", driver);
    mac.deactivate("a", driver);
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 1"));
    EXPECT_THAT(mac.copies(driver), ElementsAre("2105 terminated waiting to uninstall on reboot"));
}

TEST_F(AnAuthorizedDeactivation, OfAnIdleDriverCompletesAtOnce) {
    mac.install("2105", "enabled", driver);
    mac.deactivate("a", driver);
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
    EXPECT_THAT(mac.copies(driver), ElementsAre("2105 terminated waiting to uninstall on reboot"));
}

TEST_F(AnAuthorizedDeactivation, ForgetsTheApproval) {
    mac.install("2105", "enabled");
    mac.deactivate("a");
    mac.activate("b");
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0", "b: needs approval"));
}

TEST_F(AnAuthorizedDeactivation, TakesAWaitingCopyWithIt) {
    mac.activate("a");
    mac.deactivate("b");
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval", "a: failed 12", "b: finished 0"));
    EXPECT_THAT(mac.copies(), ElementsAre("2105 terminated waiting to uninstall on reboot"));
}

TEST_F(ADeactivation, FailsWithFourWhereNothingIsInstalled) {
    mac.deactivate("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 4"));
}

TEST_F(ADeactivation, FailsWithFourWhereAllCopiesAreOnTheirWayOut) {
    mac.install("2105", "uninstalling");
    mac.deactivate("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 4"));
}

TEST_F(ADeactivation, FailsWithFourForAProgramThatDoesNotCarryTheExtension) {
    mac.install("2105", "enabled");
    mac.mustDo(mac.machine().submit({"client", "a", "", RequestKind::deactivation, camera}));
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 4"));
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated enabled"));
}

TEST_F(ADeactivation, FailsWithFourForAnotherApplicationThatCarriesAnExtensionOfThatName) {
    mac.activate("a");
    mac.mustDo(mac.machine().allow(camera));
    BundleOnDisk other = sampleBundle();
    other.path = "/Applications/Other.app";
    other.identifier = "com.example.other";
    mac.disk().put(other);
    mac.mustDo(mac.machine().submit({"other", "b", other.path, RequestKind::deactivation, camera}));
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval", "a: finished 0", "b: failed 4"));
}

TEST_F(ADeactivation, WaitsForAnAdministratorAndGoesOnWhenAuthorized) {
    mac.install("2105", "enabled");
    mac.deactivate("a");
    EXPECT_THAT(mac.heard(), IsEmpty());
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated enabled"));
    mac.mustDo(mac.machine().authorize(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
}

TEST_F(ADeactivation, FailsWithThirteenWhenRefused) {
    mac.install("2105", "enabled");
    mac.deactivate("a");
    mac.mustDo(mac.machine().refuse(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 13"));
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated enabled"));
}

TEST_F(ADeactivation, FailsWithElevenWhenRefusedOnASystemThatCallsItCancelled) {
    mac.set("refusal", "11");
    mac.install("2105", "enabled");
    mac.deactivate("a");
    mac.mustDo(mac.machine().refuse(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 11"));
}

TEST_F(ADeactivation, AsksNoAdministratorWhereTheProfileLetsRemove) {
    mac.install("2105", "enabled");
    Profile profile;
    profile.removableExtensions[sampleTeam] = {camera};
    mac.machine().setProfile(profile);
    mac.deactivate("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
}

TEST_F(ADeactivation, IsAnsweredByAProfileThatArrives) {
    mac.install("2105", "enabled");
    mac.deactivate("a");
    Profile profile;
    profile.removableExtensions[sampleTeam] = {camera};
    mac.machine().setProfile(profile);
    mac.rest();
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
}

TEST_F(ADeactivation, IsAuthorizedWithAllTheOthersWhereThatIsSwitchedOn) {
    mac.install("2105", "enabled");
    mac.install("2105", "enabled", driver);
    mac.deactivate("a");
    mac.deactivate("b", driver);
    mac.set("authorization", "granted");
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0", "b: finished 0"));
}

TEST_F(ADeactivation, LetsTheQuestionGoWithTheClient) {
    mac.install("2105", "enabled");
    mac.deactivate("a");
    mac.machine().clientLeft("client");
    EXPECT_THAT(mac.machine().requests(), IsEmpty());
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated enabled"));
}

TEST_F(AnAuthorizedDeactivation, ThatHadBegunGoesOnWithoutTheClient) {
    mac.install("2105", "enabled");
    ASSERT_FALSE(mac.machine().submit({"client", "a", sampleApplication, RequestKind::deactivation, camera}));
    mac.machine().step();
    mac.machine().clientLeft("client");
    mac.rest();
    EXPECT_THAT(mac.copies(), ElementsAre("2105 terminated waiting to uninstall on reboot"));
    EXPECT_THAT(mac.heard(), IsEmpty());
}

} // namespace
} // namespace simulator
