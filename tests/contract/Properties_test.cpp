#include "tests/contract/ContractTest.h"

namespace contract {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(TheExtensionService, FindsNoCopyOfAnExtensionThatIsNotInstalled) {
    query("copies");
    EXPECT_THAT(heard(), ElementsAre("copies found 0"));
    EXPECT_THAT(record.copies, IsEmpty());
}

TEST_F(TheExtensionService, FindsNoCopyOfAnExtensionThatNobodyKnows) {
    query("copies", nobody);
    EXPECT_THAT(heard(), ElementsAre("copies found 0"));
}

TEST_F(TheExtensionService, TellsEachFieldOfACopy) {
    stage->install(driver, "2.0", "2004", "enabled");
    query("copies", driver);
    ASSERT_THAT(heard(), ElementsAre("copies found 1"));
    const auto& copy = record.copies.at(0);
    EXPECT_EQ(copy.bundleIdentifier, driver);
    EXPECT_EQ(copy.bundleShortVersion, "2.0");
    EXPECT_EQ(copy.bundleVersion, "2004");
    EXPECT_TRUE(copy.isEnabled);
    EXPECT_FALSE(copy.isAwaitingUserApproval);
    EXPECT_FALSE(copy.isUninstalling);
}

TEST_F(TheExtensionService, DescribesACopyByItsIdentifierAndVersions) {
    stage->install(camera, "2.0", "2004", "disabled");
    query("copies");
    ASSERT_THAT(heard(), ElementsAre("copies found 1"));
    EXPECT_EQ(record.copies.at(0).description, "<com.kelvra.ip-camera.cmio 2.0/2004>");
}

TEST_F(TheExtensionService, TellsWhatWaitsForApproval) {
    stage->install(camera, "2.1", "2105", "waiting");
    EXPECT_THAT(copies(), ElementsAre("2.1 2105 awaiting"));
}

TEST_F(TheExtensionService, TellsWhatIsBeingUninstalled) {
    stage->install(camera, "2.1", "2105", "uninstalling");
    EXPECT_THAT(copies(), ElementsAre("2.1 2105 uninstalling"));
}

TEST_F(TheExtensionService, TellsNeitherOfThreeFlagsOfWhatIsSwitchedOff) {
    stage->install(camera, "2.1", "2105", "disabled");
    EXPECT_THAT(copies(), ElementsAre("2.1 2105"));
}

TEST_F(TheExtensionService, FindsSeveralCopiesOldestFirst) {
    stage->install(camera, "3.0", "3001", "uninstalling");
    stage->install(camera, "1.0", "1001", "uninstalling");
    stage->install(camera, "1.0", "1001", "uninstalling");
    stage->install(camera, "2.2", "2210", "waiting");
    stage->install(camera, "2.1", "2105", "enabled");
    EXPECT_THAT(copies(), ElementsAre("3.0 3001 uninstalling", "1.0 1001 uninstalling", "1.0 1001 uninstalling",
                                      "2.2 2210 awaiting", "2.1 2105 enabled"));
}

TEST_F(TheExtensionService, TellsTheCopiesOfOneExtensionAlone) {
    stage->install(camera, "2.0", "2004", "enabled");
    stage->install(driver, "1.9", "1904", "enabled");
    EXPECT_THAT(copies(camera), ElementsAre("2.0 2004 enabled"));
    EXPECT_THAT(copies(driver), ElementsAre("1.9 1904 enabled"));
}

TEST_F(TheExtensionService, HandsVersionsOnAsTheyAre) {
    stage->install(camera, "", "", "uninstalling");
    stage->install(camera, "二.一 β", " 00002105 ", "uninstalling");
    stage->install(camera, std::string(4096, '1'), "-99999999999999999999", "uninstalling");
    EXPECT_THAT(copies(), ElementsAre("  uninstalling", "二.一 β  00002105  uninstalling",
                                      std::string(4096, '1') + " -99999999999999999999 uninstalling"));
}

TEST_F(TheExtensionService, AnswersTheSameQuestionEachTimeItIsAsked) {
    stage->install(camera, "2.0", "2004", "enabled");
    query("first");
    query("second");
    EXPECT_THAT(heard(), ElementsAre("first found 1", "second found 1"));
}

} // namespace
} // namespace contract
