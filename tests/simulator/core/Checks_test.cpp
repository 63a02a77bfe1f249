#include "tests/simulator/sample/SampleMac.h"

namespace simulator {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

using Change = void (*)(BundleOnDisk& bundle, ExtensionOnDisk& camera);

/// What is wrong with an application or its camera, and the error that its activation fails with.
struct Wrong {
    const char* name;
    Change make;
    std::int64_t code;
    const char* description;
};

void PrintTo(const Wrong& wrong, std::ostream* out) {
    *out << wrong.name;
}

constexpr auto notCarried = "The application contains no extension with this identifier.";
constexpr auto outside = "The application must be in an Applications folder.";
constexpr auto misnamed = "The extension's file name is not its identifier.";
constexpr auto noCategory = "The extension is of no known category.";
constexpr auto changed = "The extension's files do not match its seal.";
constexpr auto outsideItsGroup = "The camera's Mach service name is not in its application group.";

// clang-format off
const Wrong everythingThatIsWrong[]{
    {"NestedInAnotherApplication", [](auto& bundle, auto&) { bundle.path = "/Applications/Outer.app/Contents/Inner.app"; },
     1, "The application is inside another application."},
    {"WithoutTheEntitlement", [](auto& bundle, auto&) { bundle.mayInstallExtensions = false; },
     2, "The application may not install system extensions."},
    {"OutsideTheApplicationsFolder", [](auto& bundle, auto&) { bundle.path = "/Downloads/Driver Manager.app"; }, 3, outside},
    {"BesideTheApplicationsFolder", [](auto& bundle, auto&) { bundle.path = "/Applications2/Manager.app"; }, 3, outside},
    {"WithoutTheExtension", [](auto& bundle, auto&) { bundle.extensions.erase(bundle.extensions.begin()); }, 4, notCarried},
    {"WithAMisnamedExtension", [](auto&, auto& camera) { camera.fileName = "Camera.systemextension"; }, 4, misnamed},
    {"WithAnotherExtensionOfThatFileName", [](auto&, auto& camera) { camera.identifier = "com.example.other"; }, 4, misnamed},
    {"WithAnExtensionOfAnotherTeam", [](auto&, auto& camera) { camera.team = "OTHER00001"; },
     4, "The extension and the application belong to different teams."},
    {"WithoutAnIdentifier", [](auto&, auto& camera) { camera.identifier.clear(); },
     5, "The extension's Info.plist has no bundle identifier."},
    {"WithTwoExtensionsOfOneIdentifier", [](auto& bundle, auto& camera) { bundle.extensions[1].identifier = camera.identifier; },
     6, "The application contains several extensions with this identifier."},
    {"WithAnExtensionOfNoCategory", [](auto&, auto& camera) { camera.category.reset(); }, 7, noCategory},
    {"WithACameraNamedAsADriver", [](auto&, auto& camera) { camera.fileName = camera.identifier + ".dext"; }, 7, noCategory},
    {"WithADriverNamedAsACamera", [](auto&, auto& camera) { camera.category = Category::driver; }, 7, noCategory},
    {"WithAnExtensionOfAnUnknownSuffix", [](auto&, auto& camera) { camera.fileName = camera.identifier + ".appex"; }, 7, noCategory},
    {"WithAnUnsealedExtension", [](auto&, auto& camera) { camera.team.clear(); }, 8, changed},
    {"WithADamagedExtension", [](auto&, auto& camera) { camera.sealMatches = false; }, 8, changed},
    {"WithoutAUsageDescription", [](auto&, auto& camera) { camera.hasUsageDescription = false; },
     9, "The extension's Info.plist has no usage description."},
    {"WithACameraOutsideItsGroup", [](auto&, auto& camera) { camera.machServiceName = "KELVRA0001.groupcamera"; }, 9, outsideItsGroup},
    {"WithACameraWithoutAGroup", [](auto&, auto& camera) { camera.applicationGroups.clear(); }, 9, outsideItsGroup},
};
// clang-format on

class AnActivationThatIsWrong : public testing::TestWithParam<Wrong> {};

TEST_P(AnActivationThatIsWrong, FailsWithItsErrorAndLeavesNothing) {
    SampleMac mac;
    BundleOnDisk bundle = mac.application();
    mac.disk().remove(bundle.path);
    GetParam().make(bundle, bundle.extensions[0]);
    mac.disk().put(bundle);
    mac.submit({"client", "a", bundle.path, RequestKind::activation, camera});
    mac.rest();
    const std::vector<Answer> answers = mac.takeOutbox().answers;
    ASSERT_THAT(answers, SizeIs(1));
    EXPECT_EQ(std::get<Failure>(answers[0].body),
              (Failure{"OSSystemExtensionErrorDomain", GetParam().code, GetParam().description}));
    EXPECT_THAT(mac.copies(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, AnActivationThatIsWrong, testing::ValuesIn(everythingThatIsWrong),
                         [](const auto& which) { return which.param.name; });

std::int64_t codeOf(const BundleOnDisk& bundle) {
    const Settings settings;
    Subject subject = subjectOf(bundle, camera, settings);
    subject.sealMatches = subject.extension && subject.extension->sealMatches == true;
    if (const auto failure = firstFailedLookup(subject)) return failure->code;
    const auto failure = firstFailedValidation(subject);
    return failure ? failure->code : 0;
}

/// From the last check to the first.
const Wrong worseAndWorse[]{
    {"", [](auto&, auto& camera) { camera.hasUsageDescription = false; }, 9, ""},
    {"", [](auto&, auto& camera) { camera.sealMatches = false; }, 8, ""},
    {"", [](auto&, auto& camera) { camera.team = "OTHER00001"; }, 4, ""},
    {"", [](auto&, auto& camera) { camera.category.reset(); }, 7, ""},
    {"", [](auto& bundle, auto& camera) { bundle.extensions[1].identifier = camera.identifier; }, 6, ""},
    {"", [](auto& bundle, auto&) { bundle.path = "/Downloads/Driver Manager.app"; }, 3, ""},
    {"", [](auto& bundle, auto&) { bundle.mayInstallExtensions = false; }, 2, ""},
    {"", [](auto& bundle, auto&) { bundle.path = "/Applications/Outer.app/Contents/Inner.app"; }, 1, ""},
    {"", [](auto& bundle, auto&) { bundle.extensions.clear(); }, 4, ""},
};

TEST(TheChecks, AreMadeInOrder) {
    BundleOnDisk bundle = sampleBundle();
    EXPECT_EQ(codeOf(bundle), 0);
    for (const Wrong& wrong : worseAndWorse) {
        wrong.make(bundle, bundle.extensions[0]);
        EXPECT_EQ(codeOf(bundle), wrong.code);
    }
}

} // namespace
} // namespace simulator
