#include "tests/contract/ContractTest.h"

namespace contract {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

TEST_F(TheExtensionService, WaitsForTheUserBeforeItFinishesAnActivationAndLetsItGo) {
    const auto request = activate("first");
    EXPECT_THAT(heard(), ElementsAre("first needs approval"));
    EXPECT_THAT(copies(), ElementsAre("2.1 2105 awaiting"));
    act({"allow", camera});
    EXPECT_THAT(heard(), ElementsAre("first needs approval", "first finished 0"));
    EXPECT_TRUE(request.expired());
    EXPECT_THAT(copies(), ElementsAre("2.1 2105 enabled"));
}

TEST_F(TheExtensionService, FailsTheOlderOfTwoRequestsAndContinuesWithTheNewer) {
    const auto older = activate("older");
    stage->settle();
    activate("newer");
    EXPECT_THAT(heard(), ElementsAre("older needs approval", "older failed 12", "newer needs approval"));
    EXPECT_TRUE(older.expired());
    act({"allow", camera});
    EXPECT_THAT(heard(),
                ElementsAre("older needs approval", "older failed 12", "newer needs approval", "newer finished 0"));
}

// Replacement --------------------------------------------------------------------------------------------------------

TEST_F(TheExtensionService, AsksBeforeItReplacesACopy) {
    install(camera, "2.0", "2004");
    activate("first");
    EXPECT_EQ(heard().at(0), "first is asked");
    EXPECT_EQ(textOf(record.existing), "2.0 2004 enabled");
    EXPECT_EQ(record.existing.bundleIdentifier, camera);
    EXPECT_EQ(record.existing.description, "<com.kelvra.ip-camera.cmio 2.0/2004>");
    EXPECT_EQ(textOf(record.replacement), "2.1 2105");
    EXPECT_EQ(record.replacement.bundleIdentifier, camera);
    EXPECT_EQ(record.replacement.description, "<com.kelvra.ip-camera.cmio 2.1/2105>");
}

TEST_F(TheExtensionService, FinishesWithOneIfTheReplacedCopyRunsUntilTheRestart) {
    act({"switch", "driver", "in-use"});
    install(driver, "2.0", "2004");
    activate("first", driver);
    EXPECT_THAT(heard(), ElementsAre("first is asked", "first finished 1"));
    EXPECT_THAT(copies(driver), ElementsAre("2.0 2004 uninstalling", "2.1 2105 enabled"));
}

TEST_F(TheExtensionService, AsksSeparatelyForEachActivation) {
    install(camera, "2.0", "2004");
    install(driver, "2.0", "2004");
    record.cancelling.insert("first");
    activate("first", camera);
    activate("second", driver);
    EXPECT_THAT(heard(),
                UnorderedElementsAre("first is asked", "first failed 11", "second is asked", "second finished 0"));
    EXPECT_THAT(copies(camera), ElementsAre("2.0 2004 enabled"));
    EXPECT_THAT(copies(driver), ElementsAre("2.0 2004 uninstalling", "2.1 2105 enabled"));
}

} // namespace
} // namespace contract
