#include "tests/support/QtTesting.h"

#include "simulator/SystemSettings/PrivacyPage.h"
#include "tests/simulator/support/ScriptedControl.h"

namespace simulator::settings {

using tests::copyIn;

namespace {

constexpr auto network = "com.kelvra.driverkit.usb-to-poe";

ExtensionContent only(const CopyEntry& copy) {
    return pageOf({copy})[0].extensions.at(0);
}

RequestEntry question(const QString& identifier, const QString& stage = "authorization") {
    return {1, {}, {}, "/Applications/Driver Manager.app", "deactivation", identifier, stage, 0};
}

} // namespace

TEST(ThePage, HasCamerasDriversAndTheRestInListsOfTheirOwn) {
    auto other = copyIn("enabled", "com.kelvra.filter");
    other.category = "com.apple.system_extension.network_extension";
    const auto [cameras, drivers, others] = pageOf({copyIn("enabled"), copyIn("waiting", network), other});
    ASSERT_EQ(cameras.extensions.size(), 1U);
    ASSERT_EQ(drivers.extensions.size(), 1U);
    ASSERT_EQ(others.extensions.size(), 1U);
    EXPECT_EQ(drivers.extensions[0].identifier, network);
    EXPECT_EQ(others.extensions[0].identifier, "com.kelvra.filter");
    EXPECT_TRUE(cameras.extensions[0].isCamera);
    EXPECT_FALSE(drivers.extensions[0].isCamera);
}

TEST(ThePage, KeepsTheOrderOfTheCopies) {
    const auto [cameras, drivers, others] = pageOf({copyIn("enabled", "b.cmio"), copyIn("enabled", "a.cmio")});
    EXPECT_EQ(cameras.extensions.at(0).identifier, "b.cmio");
    EXPECT_EQ(cameras.extensions.at(1).identifier, "a.cmio");
}

TEST(AnExtensionOnThePage, IsTheCopy) {
    auto copy = copyIn("enabled");
    copy.number = 7;
    EXPECT_EQ(only(copy),
              (ExtensionContent{7, "com.kelvra.ip-camera.cmio", "Camera", "2.1/2105", "enabled", "Enabled", true}));
}

TEST(AnExtensionOnThePage, IsCalledByItsIdentifierIfItHasNoName) {
    auto copy = copyIn("enabled");
    copy.name.clear();
    EXPECT_EQ(only(copy).name, "com.kelvra.ip-camera.cmio");
}

TEST(AnExtensionOnThePage, SaysHowItStands) {
    EXPECT_EQ(only(copyIn("preparing")).status, "Preparing");
    EXPECT_EQ(only(copyIn("waiting")).status, "Needs approval");
    EXPECT_EQ(only(copyIn("enabled")).status, "Enabled");
    EXPECT_EQ(only(copyIn("disabled")).status, "Disabled");
    EXPECT_EQ(only(copyIn("uninstalling")).status, "Removed at restart");
    auto leaving = copyIn("uninstalling");
    leaving.state = "terminating for uninstall";
    EXPECT_EQ(only(leaving).status, "Being removed");
}

TEST(TheDecisions, AreTheCopiesThatNeedApprovalAndTheRequestsThatAskSomeone) {
    EXPECT_EQ(decisionsOf({copyIn("enabled"), copyIn("waiting")}, {}), QSet<QString>{"copy 0"});
    EXPECT_EQ(decisionsOf({}, {question("x", "user")}), QSet<QString>{"request 1"});
    EXPECT_EQ(decisionsOf({}, {question("x")}), QSet<QString>{"request 1"});
    EXPECT_EQ(decisionsOf({}, {question("x", "removing")}), QSet<QString>{});
}

TEST(TheQuestion, IsTheOldestThatAsksForAnAdministratorIfThereIsOne) {
    const auto asked =
        questionOf({question("x", "user"), question(network), question("y")}, {copyIn("enabled", network)});
    EXPECT_EQ(asked, (QuestionContent{1, network, "Network", "Driver Manager", 1}));
    EXPECT_EQ(questionOf({question("x", "user")}, {}), std::nullopt);
}

TEST(TheQuestion, NamesTheIdentifierIfNoCopyHasIt) {
    EXPECT_EQ(questionOf({question("x")}, {}), (QuestionContent{1, "x", "x", "Driver Manager", 0}));
}

} // namespace simulator::settings
