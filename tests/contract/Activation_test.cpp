#include "tests/contract/ContractTest.h"

namespace contract {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

TEST_F(TheExtensionService, WaitsForTheUserBeforeItFinishesAnActivation) {
    activate("first");
    EXPECT_THAT(heard(), ElementsAre("first needs approval"));
    EXPECT_THAT(copies(), ElementsAre("2.1 2105 awaiting"));
    stage->allow(camera);
    EXPECT_THAT(heard(), ElementsAre("first needs approval", "first finished 0"));
    EXPECT_THAT(copies(), ElementsAre("2.1 2105 enabled"));
}

TEST_F(TheExtensionService, FailsAnActivationThatTheUserDenies) {
    activate("first");
    stage->settle();
    stage->deny(camera);
    EXPECT_THAT(heard(), ElementsAre("first needs approval", "first failed 11"));
    EXPECT_THAT(copies(), IsEmpty());
}

TEST_F(TheExtensionService, FinishesAnActivationOfWhatIsEnabledAtOnce) {
    stage->install(camera, "2.1", "2105", "enabled");
    activate("first");
    EXPECT_THAT(heard(), ElementsAre("first finished 0"));
}

TEST_F(TheExtensionService, FailsAnActivationOfAnUnknownExtension) {
    activate("first", nobody);
    EXPECT_THAT(heard(), ElementsAre("first failed 4"));
    EXPECT_EQ(record.errors.at(0).domain, platform::OSSystemExtensionErrorDomain);
}

TEST_F(TheExtensionService, FailsTheOlderOfTwoRequestsAndGoesOnWithTheNewer) {
    const auto older = activate("older");
    stage->settle();
    activate("newer");
    EXPECT_THAT(heard(), ElementsAre("older needs approval", "older failed 12", "newer needs approval"));
    EXPECT_TRUE(older.expired());
    stage->allow(camera);
    EXPECT_THAT(heard(),
                ElementsAre("older needs approval", "older failed 12", "newer needs approval", "newer finished 0"));
}

TEST_F(TheExtensionService, FailsAnActivationThatADeactivationFollows) {
    activate("activation");
    stage->settle();
    remove("deactivation");
    EXPECT_THAT(heard(), ElementsAre("activation needs approval", "activation failed 12", "deactivation finished 0"));
}

// Replacement --------------------------------------------------------------------------------------------------------

TEST_F(TheExtensionService, AsksBeforeItReplacesACopyByAnother) {
    stage->install(camera, "2.0", "2004", "enabled");
    activate("first");
    EXPECT_EQ(heard().at(0), "first is asked");
    EXPECT_EQ(textOf(record.existing), "2.0 2004 enabled");
    EXPECT_EQ(record.existing.bundleIdentifier, camera);
    EXPECT_EQ(record.existing.description, "<com.kelvra.ip-camera.cmio 2.0/2004>");
    EXPECT_EQ(textOf(record.replacement), "2.1 2105");
    EXPECT_EQ(record.replacement.bundleIdentifier, camera);
    EXPECT_EQ(record.replacement.description, "<com.kelvra.ip-camera.cmio 2.1/2105>");
}

TEST_F(TheExtensionService, ReplacesACopyThatMayBeReplaced) {
    stage->install(camera, "2.0", "2004", "enabled");
    activate("first");
    EXPECT_THAT(heard(), ElementsAre("first is asked", "first finished 0"));
    EXPECT_THAT(copies(), ElementsAre("2.0 2004 uninstalling", "2.1 2105 enabled"));
}

TEST_F(TheExtensionService, LeavesACopyThatMayNotBeReplaced) {
    stage->install(camera, "2.0", "2004", "enabled");
    record.cancelling.insert("first");
    activate("first");
    EXPECT_THAT(heard(), ElementsAre("first is asked", "first failed 11"));
    EXPECT_THAT(copies(), ElementsAre("2.0 2004 enabled"));
}

TEST_F(TheExtensionService, WaitsForTheUserAfterItReplacedWhatWaited) {
    stage->install(camera, "2.2", "2210", "waiting");
    activate("first");
    EXPECT_THAT(heard(), ElementsAre("first is asked", "first needs approval"));
    EXPECT_EQ(textOf(record.existing), "2.2 2210 awaiting");
    EXPECT_THAT(copies(), ElementsAre("2.1 2105 awaiting"));
}

TEST_F(TheExtensionService, FinishesWithOneWhereTheReplacedCopyRunsOnUntilTheRestart) {
    stage->keepDriversRunning();
    stage->install(driver, "2.0", "2004", "enabled");
    activate("first", driver);
    EXPECT_THAT(heard(), ElementsAre("first is asked", "first finished 1"));
    EXPECT_THAT(copies(driver), ElementsAre("2.0 2004 uninstalling", "2.1 2105 enabled"));
}

TEST_F(TheExtensionService, KeepsTheQuestionsOfTwoActivationsApart) {
    stage->install(camera, "2.0", "2004", "enabled");
    stage->install(driver, "2.0", "2004", "enabled");
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
