#include "tests/contract/ContractTest.h"

namespace contract {
namespace {

using testing::ElementsAre;

TEST_F(TheExtensionService, FinishesADeactivation) {
    stage->install(camera, "2.0", "2004", "enabled");
    deactivate("first");
    EXPECT_THAT(heard(), ElementsAre("first finished 0"));
    EXPECT_THAT(copies(), ElementsAre("2.0 2004 uninstalling"));
}

TEST_F(TheExtensionService, FinishesADeactivationWithOneWhereTheDriverRunsOnUntilTheRestart) {
    stage->keepDriversRunning();
    stage->install(driver, "2.1", "2105", "enabled");
    deactivate("first", driver);
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
    deactivate("first");
    stage->settle();
    activate("second");
    EXPECT_THAT(heard(), ElementsAre("first finished 0", "second needs approval"));
    EXPECT_THAT(copies(), ElementsAre("2.1 2105 uninstalling", "2.1 2105 awaiting"));
}

} // namespace
} // namespace contract
