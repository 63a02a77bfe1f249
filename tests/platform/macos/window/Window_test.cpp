#include "tests/platform/macos/window/WindowTest.h"

#include <csignal>
#include <sys/stat.h>
#include <unistd.h>

namespace macos_tests {
namespace {

class TheWindow : public WindowTest {
protected:
    TheWindow() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }

    static std::vector<MenuEntry> of(const std::string& menu, const std::vector<MenuEntry>& entries) {
        std::vector<MenuEntry> found;
        for (const MenuEntry& entry : entries)
            if (entry.menu == menu) found.push_back(entry);
        return found;
    }

    static bool isNullDevice(const int descriptor) {
        struct stat opened {};
        struct stat device {};
        return fstat(descriptor, &opened) == 0 && stat("/dev/null", &device) == 0 && opened.st_rdev == device.st_rdev;
    }
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

TEST_F(TheWindow, ClosesByTheKeyOfTheMainMenu) {
    EXPECT_EXIT(runToItsEnd([](Desk& desk) { desk.tapKey("w", {"Alt_L"}); }), testing::ExitedWithCode(0), "");
}

TEST_F(TheWindow, EndsTheApplicationByTheKeyOfTheMainMenu) {
    EXPECT_EXIT(runToItsEnd([](Desk& desk) { desk.tapKey("q", {"Alt_L"}); }), testing::ExitedWithCode(0), "");
}

TEST_F(TheWindow, BelongsToAProgramThatNoClosedPipeEnds) {
    std::signal(SIGPIPE, SIG_DFL);
    run([](Desk&) { EXPECT_EQ(std::signal(SIGPIPE, SIG_IGN), SIG_IGN); });
}

TEST_F(TheWindow, BelongsToAProgramThatHasEveryStandardDescriptor) {
    const auto startWithoutInput = [] {
        close(STDIN_FILENO);
        return Desk::driverManager();
    };
    Desk::run([](Desk&) { EXPECT_TRUE(isNullDevice(STDIN_FILENO)); }, startWithoutInput);
}

TEST_F(TheWindow, HasTheStandardItemsOfAnApplication) {
    run([](Desk& desk) {
        const std::vector<MenuEntry> standard{
            {"Driver Manager", "About Driver Manager", ""},
            {"Driver Manager", "-", ""},
            {"Driver Manager", "Services", ""},
            {"Driver Manager", "-", ""},
            {"Driver Manager", "Hide Driver Manager", "command-h"},
            {"Driver Manager", "Hide Others", "option-command-h"},
            {"Driver Manager", "Show All", ""},
            {"Driver Manager", "-", ""},
            {"Driver Manager", "Quit Driver Manager", "command-q"},
        };
        EXPECT_EQ(of("Driver Manager", desk.mainMenu()), standard);
    });
}

TEST_F(TheWindow, OffersTheServicesOfOtherApplications) {
    run([](Desk& desk) { EXPECT_TRUE(desk.offersServices()); });
}

TEST_F(TheWindow, HasTheStandardItemsForEditing) {
    run([](Desk& desk) {
        const std::vector<MenuEntry> standard{
            {"Edit", "Undo", "command-z"}, {"Edit", "Redo", "shift-command-z"}, {"Edit", "-", ""},
            {"Edit", "Cut", "command-x"},  {"Edit", "Copy", "command-c"},       {"Edit", "Paste", "command-v"},
            {"Edit", "Delete", ""},        {"Edit", "Select All", "command-a"},
        };
        EXPECT_EQ(of("Edit", desk.mainMenu()), standard);
    });
}

TEST_F(TheWindow, HasTheStandardItemsForWindows) {
    run([](Desk& desk) {
        const auto entries = of("Window", desk.mainMenu());
        ASSERT_GE(entries.size(), 5u);
        EXPECT_EQ(entries[0], (MenuEntry{"Window", "Close", "command-w"}));
        EXPECT_EQ(entries[1], (MenuEntry{"Window", "Minimize", "command-m"}));
        EXPECT_EQ(entries[2], (MenuEntry{"Window", "Zoom", ""}));
        EXPECT_EQ(entries[3], (MenuEntry{"Window", "-", ""}));
        EXPECT_EQ(entries[4], (MenuEntry{"Window", "Bring All to Front", ""}));
    });
}

} // namespace
} // namespace macos_tests
