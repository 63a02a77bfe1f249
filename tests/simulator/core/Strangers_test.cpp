// Programs that ask for an extension that is not their own.

#include "tests/simulator/sample/SampleMac.h"

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A program whose request for an extension cannot but fail.
struct Stranger {
    const char* name;
    /// The bundle that it runs from; empty if it runs from none.
    std::string application;
    /// Makes the other application what it is.
    void (*make)(BundleOnDisk& other);
};

void PrintTo(const Stranger& stranger, std::ostream* out) {
    *out << stranger.name;
}

const Stranger strangers[]{
    {"InNoBundle", "", [](auto&) {}},
    {"InABundleThatIsGone", "/Applications/Gone.app", [](auto&) {}},
    {"OfAnotherApplication", "/Applications/Other.app", [](auto&) {}},
    {"OfAnotherApplicationWithoutTheExtension", "/Applications/Other.app",
     [](auto& other) { other.extensions.clear(); }},
    {"OfAnotherTeam", "/Applications/Other.app",
     [](auto& other) {
         other.identifier = sampleBundle().identifier;
         other.team = "OTHER00001";
         other.extensions[0].team = other.team;
     }},
};

class AStranger : public testing::TestWithParam<Stranger> {
protected:
    AStranger() {
        BundleOnDisk other = otherBundle();
        setVersion(other, "3.0", "3000");
        GetParam().make(other);
        mac.disk().put(other);
    }

    Machine& machine() { return mac.machine(); }
    void submit(const std::string& token, RequestKind kind) {
        mac.submit({"stranger", token, GetParam().application, kind, camera});
    }
    /// Asks for both, and is told no more than that there is no such extension.
    void askForBoth() {
        mac.heard();
        submit("x", RequestKind::activation);
        submit("y", RequestKind::deactivation);
        mac.rest();
        EXPECT_THAT(mac.heard(), ElementsAre("x: failed 4", "y: failed 4"));
    }

    SampleMac mac;
};

TEST_P(AStranger, DoesNotAffectAnActivationThatWaitsForTheUser) {
    for (const auto* const value : {"supersedes", "fails"}) {
        mac.set("second", value);
        mac.activate("a");
        askForBoth();
        mac.mustDo(machine().deny(camera));
        EXPECT_THAT(mac.heard(), ElementsAre("a: failed 11"));
    }
}

TEST_P(AStranger, DoesNotAffectAnOpenReplacementQuestion) {
    mac.install("2004", "enabled");
    mac.activate("a");
    askForBoth();
    mac.answer("a", true);
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
}

TEST_P(AStranger, DoesNotAffectARemovalThatWaitsForAnAdministrator) {
    mac.install("2105", "enabled");
    mac.deactivate("a");
    askForBoth();
    mac.mustDo(machine().authorize(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("a: finished 0"));
}

TEST_P(AStranger, DoesNotBlockTheOwner) {
    for (const auto* const value : {"supersedes", "fails"}) {
        mac.set("second", value);
        mac.install("2105", "enabled");
        submit("x", RequestKind::activation);
        submit("y", RequestKind::deactivation);
        mac.deactivate("a");
        mac.mustDo(machine().authorize(camera));
        EXPECT_THAT(mac.heard(), ElementsAre("x: failed 4", "y: failed 4", "a: finished 0"));
    }
}

TEST_P(AStranger, UsesUpNoFault) {
    mac.install("2004", "enabled");
    mac.mustDo(machine().orderFault({}));
    askForBoth();
    EXPECT_THAT(machine().state().faults, SizeIs(1));
    mac.activate("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 0"));
    EXPECT_THAT(machine().state().faults, IsEmpty());
}

/// What it asks for is the owner's when it asks, and gone when it is looked at.
TEST_P(AStranger, GainsNothingIfTheOwnerRemovesTheExtensionMeanwhile) {
    mac.install("2105", "enabled");
    mac.deactivate("a");
    submit("x", RequestKind::activation);
    mac.mustDo(machine().authorize(camera));
    EXPECT_THAT(mac.heard(), ElementsAre("x: failed 4", "a: finished 0"));
}

TEST_P(AStranger, MayReadThePropertiesLikeAnyone) {
    mac.install("2105", "enabled");
    submit("x", RequestKind::properties);
    mac.rest();
    EXPECT_THAT(mac.heard(), ElementsAre("x: found 0.0/2105 enabled"));
}

INSTANTIATE_TEST_SUITE_P(Each, AStranger, testing::ValuesIn(strangers),
                         [](const auto& which) { return which.param.name; });

/// An application that has an open request changes the extension that it carries, and asks again.
TEST(AnApplicationThatCarriesItWrongly, SupersedesOnlyItsOwnRequest) {
    using CameraChange = void (*)(ExtensionOnDisk & camera);
    const auto heardAfter = [](CameraChange change) {
        SampleMac mac;
        mac.activate("a");
        mac.heard();
        change(mac.application().extensions[0]);
        mac.activate("b");
        return mac.heard();
    };
    const auto itsOwn = [&](CameraChange change, const char* failure) {
        EXPECT_THAT(heardAfter(change), ElementsAre("a: failed 12", failure));
    };
    const auto anothers = [&](CameraChange change) { EXPECT_THAT(heardAfter(change), ElementsAre("b: failed 4")); };
    anothers([](auto& camera) { camera.fileName = "Camera.systemextension"; });
    anothers([](auto& camera) { camera.team = "OTHER00001"; });
    itsOwn([](auto& camera) { camera.sealMatches = false; }, "b: failed 8");
    itsOwn([](auto& camera) { camera.identifier.clear(); }, "b: failed 5");
}

TEST(AnotherApplication, GetsTheCodeOfTheFirstCheckThatItFails) {
    SampleMac mac;
    mac.activate("a");
    BundleOnDisk other = otherBundle();
    other.mayInstallExtensions = false;
    mac.disk().put(other);
    mac.submit({"other", "x", other.path, RequestKind::activation, camera});
    mac.rest();
    EXPECT_EQ(mac.heard().back(), "x: failed 2");
}

} // namespace
} // namespace simulator
