#include "tests/platform/macos/window/WindowTest.h"
#include "tests/support/Descriptors.h"

namespace macos_tests {
namespace {

class TheWindow : public WindowTest {
protected:
    TheWindow() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }
};

TEST_F(TheWindow, HasItsTitleAndTheSizeOfItsContentBelowTheTitleBar) {
    run([](Desk& desk) {
        EXPECT_EQ(desk.title(), "Driver Manager");
        EXPECT_EQ(desk.contentSize(), (platform::ui::Size{450, 28 + 230}));
    });
}

TEST_F(TheWindow, EndsTheApplicationWithItsClosing) {
    EXPECT_EXIT(runToItsEnd([](Desk& desk) { desk.closeWindow(); }), testing::ExitedWithCode(0), "");
}

TEST_F(TheWindow, EndsTheApplicationByTheKeyOfTheMainMenu) {
    EXPECT_EXIT(runToItsEnd([](Desk& desk) { desk.tapKey("q", {"Alt_L"}); }), testing::ExitedWithCode(0), "");
}

TEST_F(TheWindow, BelongsToAProgramThatHasEveryStandardDescriptor) {
    const auto startWithoutInput = [] {
        close(STDIN_FILENO);
        return Desk::driverManager();
    };
    Desk::run([](Desk&) { EXPECT_TRUE(tests::isNullDevice(STDIN_FILENO)); }, startWithoutInput);
}

/// The system adds the open windows at the end.
const std::vector<std::string> standardMenus{
    "Driver Manager: About Driver Manager orderFrontStandardAboutPanel:",
    "Driver Manager: -",
    "Driver Manager: Services",
    "Driver Manager: -",
    "Driver Manager: Hide Driver Manager command-h hide:",
    "Driver Manager: Hide Others option-command-h hideOtherApplications:",
    "Driver Manager: Show All unhideAllApplications:",
    "Driver Manager: -",
    "Driver Manager: Quit Driver Manager command-q terminate:",
    "Edit: Undo command-z undo:",
    "Edit: Redo shift-command-z redo:",
    "Edit: -",
    "Edit: Cut command-x cut:",
    "Edit: Copy command-c copy:",
    "Edit: Paste command-v paste:",
    "Edit: Delete delete:",
    "Edit: Select All command-a selectAll:",
    "Window: Close command-w performClose:",
    "Window: Minimize command-m performMiniaturize:",
    "Window: Zoom performZoom:",
    "Window: -",
    "Window: Bring All to Front arrangeInFront:",
};

TEST_F(TheWindow, HasTheMenusOfEveryApplication) {
    run([](Desk& desk) {
        auto seen = desk.mainMenu();
        ASSERT_GE(seen.size(), standardMenus.size());
        seen.resize(standardMenus.size());
        EXPECT_EQ(seen, standardMenus);
        EXPECT_TRUE(desk.offersServices());
    });
}

} // namespace
} // namespace macos_tests
