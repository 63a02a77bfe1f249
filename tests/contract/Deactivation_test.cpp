#include "tests/contract/ContractTest.h"

namespace contract {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(TheExtensionService, WaitsWithADeactivationForTheAdministrator) {
    stage->install(camera, "2.0", "2004", "enabled");
    deactivate("first");
    EXPECT_THAT(heard(), IsEmpty());
    EXPECT_THAT(copies(), ElementsAre("2.0 2004 enabled"));
}

TEST_F(TheExtensionService, FailsADeactivationThatTheAdministratorRefuses) {
    stage->install(camera, "2.0", "2004", "enabled");
    deactivate("first");
    stage->settle();
    stage->refuse(camera);
    EXPECT_THAT(heard(), ElementsAre("first failed 13"));
    EXPECT_THAT(copies(), ElementsAre("2.0 2004 enabled"));
}

TEST_F(TheExtensionService, FinishesADeactivation) {
    stage->install(camera, "2.0", "2004", "enabled");
    remove("first");
    EXPECT_THAT(heard(), ElementsAre("first finished 0"));
    EXPECT_THAT(copies(), ElementsAre("2.0 2004 uninstalling"));
}

TEST_F(TheExtensionService, FinishesADeactivationWithOneWhereTheDriverRunsOnUntilTheRestart) {
    stage->keepDriversRunning();
    stage->install(driver, "2.1", "2105", "enabled");
    remove("first", driver);
    EXPECT_THAT(heard(), ElementsAre("first finished 1"));
    EXPECT_THAT(copies(driver), ElementsAre("2.1 2105 uninstalling"));
}

TEST_F(TheExtensionService, FailsADeactivationOfWhatIsNotInstalled) {
    deactivate("first");
    EXPECT_THAT(heard(), ElementsAre("first failed 4"));
}

TEST_F(TheExtensionService, FailsADeactivationOfAnUnknownExtension) {
    deactivate("first", nobody);
    EXPECT_THAT(heard(), ElementsAre("first failed 4"));
}

TEST_F(TheExtensionService, AsksTheUserAnewAfterADeactivation) {
    stage->install(camera, "2.1", "2105", "enabled");
    remove("first");
    stage->settle();
    activate("second");
    EXPECT_THAT(heard(), ElementsAre("first finished 0", "second needs approval"));
    EXPECT_THAT(copies(), ElementsAre("2.1 2105 uninstalling", "2.1 2105 awaiting"));
}

} // namespace
} // namespace contract
