#include "tests/simulator/sample/SampleMac.h"

#include <functional>

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Wrong {
    const char* name;
    int code;
    std::function<void(BundleOnDisk&)> make;
};

void PrintTo(const Wrong& wrong, std::ostream* out) {
    *out << wrong.name;
}

class AnActivationThatIsWrong : public testing::TestWithParam<Wrong> {
protected:
    SampleMac mac;
};

TEST_P(AnActivationThatIsWrong, FailsWithItsCodeAndLeavesNothing) {
    BundleOnDisk bundle = mac.application();
    mac.disk().remove(bundle.path);
    GetParam().make(bundle);
    mac.disk().put(bundle);
    mac.mustDo(mac.machine().submit({"client", "a", bundle.path, RequestKind::activation, camera}));
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed " + std::to_string(GetParam().code)));
    EXPECT_THAT(mac.copies(), IsEmpty());
}

const std::vector<Wrong> everythingThatIsWrong{
    {"NestedInAnotherApplication", 1,
     [](BundleOnDisk& bundle) { bundle.path = "/Applications/Outer.app/Contents/Inner.app"; }},
    {"WithoutTheEntitlement", 2, [](BundleOnDisk& bundle) { bundle.mayInstallExtensions = false; }},
    {"OutsideTheApplicationsFolder", 3, [](BundleOnDisk& bundle) { bundle.path = "/Downloads/Driver Manager.app"; }},
    {"BesideTheApplicationsFolder", 3, [](BundleOnDisk& bundle) { bundle.path = "/Applications2/Manager.app"; }},
    {"WithoutTheExtension", 4, [](BundleOnDisk& bundle) { bundle.extensions.erase(bundle.extensions.begin()); }},
    {"WithAMisnamedExtension", 4,
     [](BundleOnDisk& bundle) { bundle.extensions[0].fileName = "Camera.systemextension"; }},
    {"WithAnotherExtensionOfThatFileName", 4,
     [](BundleOnDisk& bundle) { bundle.extensions[0].identifier = "com.example.other"; }},
    {"WithAnExtensionOfAnotherTeam", 4, [](BundleOnDisk& bundle) { bundle.extensions[0].team = "OTHER00001"; }},
    {"WithoutAnIdentifier", 5, [](BundleOnDisk& bundle) { bundle.extensions[0].identifier.clear(); }},
    {"WithTwoExtensionsOfOneIdentifier", 6, [](BundleOnDisk& bundle) { bundle.extensions[1].identifier = camera; }},
    {"WithAnExtensionOfNoCategory", 7, [](BundleOnDisk& bundle) { bundle.extensions[0].category.reset(); }},
    {"WithACameraNamedAsADriver", 7,
     [](BundleOnDisk& bundle) { bundle.extensions[0].fileName = std::string{camera} + ".dext"; }},
    {"WithAnExtensionOfAnUnknownSuffix", 7,
     [](BundleOnDisk& bundle) { bundle.extensions[0].fileName = std::string{camera} + ".appex"; }},
    {"WithAnUnsealedExtension", 8, [](BundleOnDisk& bundle) { bundle.extensions[0].team.clear(); }},
    {"WithADamagedExtension", 8, [](BundleOnDisk& bundle) { bundle.extensions[0].sealMatches = false; }},
    {"WithoutAUsageDescription", 9, [](BundleOnDisk& bundle) { bundle.extensions[0].hasUsageDescription = false; }},
    {"WithACameraOutsideItsGroup", 9,
     [](BundleOnDisk& bundle) { bundle.extensions[0].machServiceName = "KELVRA0001.groupcamera"; }},
    {"WithACameraWithoutAGroup", 9, [](BundleOnDisk& bundle) { bundle.extensions[0].applicationGroups.clear(); }},
};

INSTANTIATE_TEST_SUITE_P(Every, AnActivationThatIsWrong, testing::ValuesIn(everythingThatIsWrong),
                         [](const auto& which) { return which.param.name; });

/// A profile that allows nothing and leaves nothing to the user.
Profile forbidding() {
    Profile profile;
    profile.allowsUserOverrides = false;
    return profile;
}

class ACheck : public testing::Test {
protected:
    SampleMac mac;
};

TEST_F(ACheck, OfThePlaceIsLeftOutInDeveloperMode) {
    BundleOnDisk bundle = sampleBundle();
    bundle.path = "/Downloads/Driver Manager.app";
    mac.disk().put(bundle);
    mac.machine().setDeveloperMode(true);
    mac.mustDo(mac.machine().submit({"client", "a", bundle.path, RequestKind::activation, camera}));
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval"));
}

TEST_F(ACheck, OfThePlaceGoesByTheFoldersThatWereSet) {
    mac.mustDo(mac.machine().setApplicationsFolders({"/elsewhere", "/tmp/build"}));
    mac.activate("a");
    BundleOnDisk bundle = sampleBundle();
    bundle.path = "/tmp/build/Driver Manager.app";
    mac.disk().put(bundle);
    mac.mustDo(mac.machine().submit({"client", "b", bundle.path, RequestKind::activation, camera}));
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 3", "b: needs approval"));
}

TEST_F(ACheck, OfThePlaceTakesAnyWhereTheFolderIsTheRoot) {
    mac.mustDo(mac.machine().setApplicationsFolders({"/"}));
    mac.activate("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval"));
}

TEST_F(ACheck, OfWhoAsksComesFirst) {
    mac.application().mayInstallExtensions = false;
    mac.activate("a", "com.example.unknown");
    mac.mustDo(mac.machine().submit({"client", "b", "", RequestKind::activation, camera}));
    mac.mustDo(mac.machine().submit({"client", "c", "/gone.app", RequestKind::activation, camera}));
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 4", "b: failed 4", "c: failed 4"));
}

TEST_F(ACheck, RefusesTheExtensionOfAnotherApplication) {
    mac.activate("a");
    mac.mustDo(mac.machine().allow(camera));
    BundleOnDisk other = sampleBundle();
    other.path = "/Applications/Other.app";
    other.identifier = "com.example.other";
    setVersion(other, "3.0", "3000");
    mac.disk().put(other);
    mac.heard();
    mac.mustDo(mac.machine().submit({"client", "b", other.path, RequestKind::activation, camera}));
    EXPECT_THAT(mac.heard(), ElementsAre("b: failed 4"));
}

TEST_F(ACheck, ComesBeforeTheReplacementQuestion) {
    mac.install("2004", "enabled");
    mac.application().extensions[0].sealMatches = false;
    mac.activate("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 8"));
    EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled"));
}

TEST_F(ACheck, ForbidsWhatTheProfileNeitherAllowsNorLeavesToTheUser) {
    Profile profile;
    profile.allowsUserOverrides = false;
    profile.allowedExtensions[sampleTeam] = {driver};
    mac.machine().setProfile(profile);
    mac.activate("a", camera);
    mac.activate("b", driver);
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 10", "b: finished 0"));
}

TEST_F(ACheck, FindsThatTheVersionThatWaitsWasForbiddenSince) {
    mac.activate("a");
    mac.machine().clientLeft("client");
    mac.machine().setProfile(forbidding());
    mac.activate("b");
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval", "b: failed 10"));
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated waiting for user"));
}

TEST_F(ACheck, FindsThatTheVersionThatWaitsWasDamagedSince) {
    mac.activate("a");
    mac.machine().clientLeft("client");
    mac.application().extensions[0].sealMatches = false;
    mac.activate("b");
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval", "b: failed 8"));
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated waiting for user"));
}

/// The very version that the application carries is activated, or was and is switched off.
class ACheckOfWhatIsThere : public ACheck, public testing::WithParamInterface<const char*> {
protected:
    ACheckOfWhatIsThere() {
        mac.install("2105", GetParam());
        setVersion(mac.application(), "0.0", "2105");
    }

    void expectOnlyThatItFailsWith(const std::string& code) {
        const std::vector<std::string> copies = mac.copies();
        mac.activate("a");
        EXPECT_THAT(mac.heard(), ElementsAre("a: failed " + code));
        EXPECT_EQ(mac.copies(), copies);
    }
};

TEST_P(ACheckOfWhatIsThere, FindsThatItWasDamagedSince) {
    mac.application().extensions[0].sealMatches = false;
    expectOnlyThatItFailsWith("8");
}

TEST_P(ACheckOfWhatIsThere, FindsThatItIsNoLongerValidForItsCategory) {
    mac.application().extensions[0].hasUsageDescription = false;
    expectOnlyThatItFailsWith("9");
}

TEST_P(ACheckOfWhatIsThere, FindsThatItWasForbiddenSince) {
    mac.machine().setProfile(forbidding());
    expectOnlyThatItFailsWith("10");
}

TEST_P(ACheckOfWhatIsThere, FindsThatItWasDamagedSinceInDeveloperModeToo) {
    mac.machine().setDeveloperMode(true);
    mac.application().extensions[0].sealMatches = false;
    expectOnlyThatItFailsWith("8");
}

TEST_P(ACheckOfWhatIsThere, FindsThatItWasForbiddenSinceInDeveloperModeToo) {
    mac.machine().setDeveloperMode(true);
    mac.machine().setProfile(forbidding());
    expectOnlyThatItFailsWith("10");
}

INSTANTIATE_TEST_SUITE_P(Each, ACheckOfWhatIsThere, testing::Values("enabled", "disabled"),
                         [](const auto& which) { return std::string{which.param}; });

TEST_F(ACheck, SaysWhyInItsDescription) {
    mac.application().mayInstallExtensions = false;
    mac.activate("a");
    const auto& failure = std::get<Failure>(mac.answers().back().body);
    EXPECT_EQ(failure,
              (Failure{"OSSystemExtensionErrorDomain", 2, "The application may not install system extensions."}));
}

} // namespace
} // namespace simulator
