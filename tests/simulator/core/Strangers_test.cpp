#include "tests/simulator/sample/SampleMac.h"

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr auto otherApplication = "/Applications/Other.app";

BundleOnDisk anotherApplication() {
    BundleOnDisk other = sampleBundle();
    other.path = otherApplication;
    other.identifier = "com.example.other";
    setVersion(other, "3.0", "3000");
    return other;
}

/// A program whose request for an extension cannot but fail, as the extension is not its own.
struct Stranger {
    const char* name;
    /// The bundle that it runs from; empty if it runs from none.
    std::string application;
    /// Makes it what it is, where it is one of another application.
    void (*make)(BundleOnDisk& other);
};

void PrintTo(const Stranger& stranger, std::ostream* out) {
    *out << stranger.name;
}

void leaveAsItIs(BundleOnDisk&) {
}

const std::vector<Stranger> strangers{
    {"InNoBundle", "", leaveAsItIs},
    {"InABundleThatIsGone", "/Applications/Gone.app", leaveAsItIs},
    {"OfAnotherApplication", otherApplication, leaveAsItIs},
    {"OfAnotherApplicationWithoutTheExtension", otherApplication,
     [](BundleOnDisk& other) { other.extensions.clear(); }},
    {"OfAnotherTeam", otherApplication,
     [](BundleOnDisk& other) {
         other.identifier = sampleBundle().identifier;
         other.team = "OTHER00001";
         other.extensions[0].team = other.team;
     }},
};

class AStranger : public testing::TestWithParam<Stranger> {
protected:
    AStranger() {
        BundleOnDisk other = anotherApplication();
        GetParam().make(other);
        mac.disk().put(other);
    }

    Machine& machine() { return mac.machine(); }
    void submit(const std::string& token, RequestKind kind) {
        ASSERT_FALSE(machine().submit({"stranger", token, GetParam().application, kind, camera}));
    }
    /// Asks for both, and is told no more than that there is no such extension.
    void askForBoth() {
        submit("x", RequestKind::activation);
        submit("y", RequestKind::deactivation);
        mac.rest();
        EXPECT_THAT(mac.heard(), ElementsAre("x: failed 4", "y: failed 4"));
    }

    SampleMac mac;
};

TEST_P(AStranger, LeavesTheActivationThatWaitsForTheUserAlone) {
    mac.activate("a");
    mac.heard();
    askForBoth();
    mac.mustDo(machine().allow(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
}

TEST_P(AStranger, LeavesTheQuestionAboutTheReplacementOpen) {
    mac.install("2004", "enabled");
    mac.activate("a");
    mac.heard();
    askForBoth();
    mac.answer("a", true);
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
    EXPECT_THAT(mac.copies(), ElementsAre("2004 terminated waiting to uninstall on reboot", "2105 activated enabled"));
}

TEST_P(AStranger, LeavesTheRemovalThatTheAdministratorIsAskedAboutAlone) {
    mac.install("2105", "enabled");
    mac.deactivate("a");
    askForBoth();
    mac.mustDo(machine().authorize(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
}

TEST_P(AStranger, IsToldThatThereIsNoSuchExtensionOnASystemThatKeepsTheOlderRequestToo) {
    mac.set("second", "fails");
    mac.activate("a");
    mac.heard();
    askForBoth();
    mac.mustDo(machine().allow(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
}

TEST_P(AStranger, IsNotInTheWayOfTheOwner) {
    mac.install("2105", "enabled");
    submit("x", RequestKind::activation);
    submit("y", RequestKind::deactivation);
    mac.deactivate("a");
    mac.mustDo(machine().authorize(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("x: failed 4", "y: failed 4", "a: finished 0"));
}

TEST_P(AStranger, IsNotInTheWayOfTheOwnerOnASystemThatKeepsTheOlderRequest) {
    mac.set("second", "fails");
    mac.install("2105", "enabled");
    submit("x", RequestKind::activation);
    submit("y", RequestKind::deactivation);
    mac.deactivate("a");
    mac.mustDo(machine().authorize(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("x: failed 4", "y: failed 4", "a: finished 0"));
}

TEST_P(AStranger, TakesNoFaultThatWasOrdered) {
    mac.install("2004", "enabled");
    mac.mustDo(machine().orderFault({}));
    askForBoth();
    EXPECT_THAT(machine().state().faults, SizeIs(1));
    mac.activate("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 0"));
    EXPECT_THAT(machine().state().faults, IsEmpty());
}

/// What it asks for is the owner's when it asks, and gone when it is looked at.
TEST_P(AStranger, GetsNothingBecauseTheOwnerRemovesItMeanwhile) {
    mac.install("2105", "enabled");
    mac.deactivate("a");
    submit("x", RequestKind::activation);
    mac.mustDo(machine().authorize(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("x: failed 4", "a: finished 0"));
}

TEST_P(AStranger, IsToldTheCopiesLikeAnyone) {
    mac.install("2105", "enabled");
    submit("x", RequestKind::properties);
    mac.rest();
    EXPECT_THAT(mac.heard(), ElementsAre("x: found 2105 enabled"));
}

INSTANTIATE_TEST_SUITE_P(Each, AStranger, testing::ValuesIn(strangers),
                         [](const auto& which) { return which.param.name; });

class AnApplicationThatCarriesItWrongly : public testing::Test {
protected:
    AnApplicationThatCarriesItWrongly() {
        mac.activate("a");
        mac.heard();
    }

    void askFromElsewhere(const BundleOnDisk& bundle) {
        mac.disk().put(bundle);
        mac.mustDo(mac.machine().submit({"other", "x", bundle.path, RequestKind::activation, camera}));
    }

    SampleMac mac;
};

TEST_F(AnApplicationThatCarriesItWrongly, UnderAnotherNameLeavesTheOpenRequestAlone) {
    mac.application().extensions[0].fileName = "Camera.systemextension";
    mac.activate("b");
    EXPECT_THAT(mac.heard(), ElementsAre("b: failed 4"));
}

TEST_F(AnApplicationThatCarriesItWrongly, OfAnotherTeamLeavesTheOpenRequestAlone) {
    mac.application().extensions[0].team = "OTHER00001";
    mac.activate("b");
    EXPECT_THAT(mac.heard(), ElementsAre("b: failed 4"));
}

TEST_F(AnApplicationThatCarriesItWrongly, OfAnotherOwnerGetsTheCodeOfTheFirstCheckThatItFails) {
    BundleOnDisk other = anotherApplication();
    other.mayInstallExtensions = false;
    askFromElsewhere(other);
    EXPECT_THAT(mac.heard(), ElementsAre("x: failed 2"));
}

TEST_F(AnApplicationThatCarriesItWrongly, DamagedTakesThePlaceOfItsOwnRequest) {
    mac.application().extensions[0].sealMatches = false;
    mac.activate("b");
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 12", "b: failed 8"));
}

TEST_F(AnApplicationThatCarriesItWrongly, WithoutAnIdentifierTakesThePlaceOfItsOwnRequest) {
    mac.application().extensions[0].identifier.clear();
    mac.activate("b");
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 12", "b: failed 5"));
}

} // namespace
} // namespace simulator
