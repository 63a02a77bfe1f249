#include "platform/ui/Elements.h"
#include "tests/macos/gnustep/StandIns.h"
#include "tests/platform/macos/window/ScreenTest.h"

namespace macos_tests {
namespace {

namespace ui = platform::ui;

class AMenuByKeyboard : public ScreenTest {
protected:
    /// The menu, where the number is 0, and a button that tells the number.
    Screen screen() {
        return [this](const int number) {
            return rows({number == 0 ? menu() : ui::View{ui::EmptyView{}}, button(std::to_string(number))});
        };
    }
    static void focusMenu(Desk& desk) {
        desk.tapKey("Tab");
        ASSERT_TRUE(desk.until([&] { return desk.focused() == "Menu"; }));
    }
    /// Opens the menu that has focus, takes the steps and waits until it has closed.
    static void open(Desk& desk, const std::string& key, std::vector<Step> steps) {
        steps.insert(steps.begin(), desk.onceMenuIsOpen([] {}));
        desk.meanwhile(std::move(steps));
        desk.tapKey(key);
        ASSERT_TRUE(desk.until([&] { return desk.meanwhileIsOver() && desk.menuItems().empty(); }));
    }
    static Step tap(Desk& desk, const std::string& key) {
        return atOnce([&desk, key] { desk.tapKey(key); });
    }
    static Step tapAt(const std::string& item, Desk& desk, const std::string& key) {
        return {"keys at " + item, [&desk, item] { return desk.highlightedItem() == item; },
                [&desk, key] { desk.tapKey(key); }};
    }

    std::vector<std::string> chosen_;

private:
    ui::View menu() {
        const auto item = [this](const char* title) {
            return ui::Button{ui::Label{title, "trash"}, [this, title] { chosen_.emplace_back(title); }};
        };
        return ui::Menu{"Menu", {item("One"), item("Two"), item("Three")}};
    }
};

TEST_F(AMenuByKeyboard, OpensBySpaceAndChoosesByReturn) {
    run(screen(), [this](Desk& desk) {
        focusMenu(desk);
        open(desk, "space", {tap(desk, "Down"), tapAt("One", desk, "Return")});
        EXPECT_THAT(chosen_, testing::ElementsAre("One"));
    });
}

TEST_F(AMenuByKeyboard, IsWalkedWithArrows) {
    run(screen(), [this](Desk& desk) {
        focusMenu(desk);
        open(desk, "space",
             {tap(desk, "Down"), tapAt("One", desk, "Down"), tapAt("Two", desk, "Down"), tapAt("Three", desk, "Up"),
              tapAt("Two", desk, "Return")});
        EXPECT_THAT(chosen_, testing::ElementsAre("Two"));
    });
}

TEST_F(AMenuByKeyboard, ClosesByEscapeWithNothingChosen) {
    run(screen(), [this](Desk& desk) {
        focusMenu(desk);
        open(desk, "space", {tap(desk, "Down"), tapAt("One", desk, "Escape")});
        EXPECT_THAT(chosen_, testing::IsEmpty());
    });
}

TEST_F(AMenuByKeyboard, LeavesFocusWhereItIs) {
    run(screen(), [](Desk& desk) {
        focusMenu(desk);
        for (const char* key : {"Escape", "Return"}) {
            open(desk, "space", {tap(desk, "Down"), tapAt("One", desk, key)});
            EXPECT_EQ(desk.focused(), "Menu") << key;
        }
    });
}

TEST_F(AMenuByKeyboard, ClosesWhenItsPlaceIsGone) {
    run(screen(), [this](Desk& desk) {
        focusMenu(desk);
        open(desk, "space", {atOnce([this] { change(1); })});
        EXPECT_TRUE(desk.has("1"));
        EXPECT_FALSE(desk.has("Menu"));
        EXPECT_EQ(desk.focused(), "1");
        EXPECT_THAT(chosen_, testing::IsEmpty());
    });
}

TEST_F(AMenuByKeyboard, TellsWhatWasChosenThoughItsPlaceGoesBeforeThat) {
    run(screen(), [this](Desk& desk) {
        focusMenu(desk);
        bool isGone = false;
        standin::onceMenuHasClosed([&] { change(1); }, [&] { isGone = !desk.has("Menu"); });
        open(desk, "space", {tap(desk, "Down"), tapAt("One", desk, "Return")});
        EXPECT_TRUE(isGone);
        EXPECT_THAT(chosen_, testing::ElementsAre("One"));
    });
}

} // namespace
} // namespace macos_tests
