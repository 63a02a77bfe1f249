#include "platform/ui/Elements.h"
#include "tests/macos/gnustep/StandIns.h"
#include "tests/platform/macos/window/WindowTest.h"

namespace macos_tests {
namespace {

namespace ui = platform::ui;

using testing::ElementsAre;
using testing::IsEmpty;

class AMenu : public ScreenTest {
protected:
    /// A menu, whose item tells which number was on the screen that it is of, and a button that tells the number.
    Screen menuAndNumber() {
        return [this](const int number) { return rows({menu(number), button(std::to_string(number))}); };
    }
    /// The same without the menu where the number is not 0.
    Screen menuAtFirst() {
        return [this](const int number) {
            return rows({number == 0 ? menu(0) : ui::View{ui::EmptyView{}}, button(std::to_string(number))});
        };
    }
    ui::View menu(const int number) {
        return ui::Menu{"Menu",
                        {ui::Button{ui::Label{"Item", "trash"}, [this, number] { chosen_.push_back(number); }}}};
    }
    /// Opens the menu that has focus, takes the steps and waits until it has closed.
    static void openByKey(Desk& desk, std::vector<Step> steps) {
        desk.tapKey("Tab");
        ASSERT_TRUE(comesToFocus(desk, "Menu"));
        steps.insert(steps.begin(), desk.onceMenuIsOpen([] {}));
        desk.meanwhile(std::move(steps));
        desk.tapKey("space");
        ASSERT_TRUE(desk.until([&] { return desk.meanwhileIsOver() && desk.menuItems().empty(); }));
    }
    static Step tap(Desk& desk, const std::string& key) {
        return atOnce([&desk, key] { desk.tapKey(key); });
    }
    static Step tapAtItem(Desk& desk, const std::string& key) {
        return {"keys at the item", [&desk] { return desk.highlightedItem() == "Item"; },
                [&desk, key] { desk.tapKey(key); }};
    }

    std::vector<int> chosen_;
};

TEST_F(AMenu, KeepsTheHandlersThatItWasOpenedWithUntilItCloses) {
    run(menuAndNumber(), [this](Desk& desk) {
        desk.press("Menu", {desk.onceMenuIsOpen([&] { change(1); }),
                            {"the next scene", [&] { return desk.has("1"); }, [] {}},
                            desk.onceAtItem("Item", [&] { desk.releaseButton(); })});
        ASSERT_TRUE(desk.until([&] { return chosen_.size() == 1; }));
        ASSERT_TRUE(desk.until(standin::isAtRest)); // the next thing that a person does comes later
        desk.choose("Menu", "Item");
        ASSERT_TRUE(desk.until([&] { return chosen_.size() == 2; }));
        EXPECT_THAT(chosen_, ElementsAre(0, 1));
    });
}

TEST_F(AMenu, ClosesWhenItsPlaceIsGone) {
    run(menuAtFirst(), [this](Desk& desk) {
        desk.press("Menu", {desk.onceMenuIsOpen([&] { change(1); })});
        ASSERT_TRUE(desk.until([&] { return desk.has("1") && desk.menuItems().empty(); }));
        desk.releaseButton();
        desk.click("1");
        EXPECT_TRUE(desk.until([&] { return pressed("1") == 1; }));
        EXPECT_THAT(chosen_, IsEmpty());
    });
}

TEST_F(AMenu, MayTakeItselfAwayByWhatIsChosen) {
    const auto all = std::make_shared<std::vector<int>>(1000, 1);
    std::size_t finished = 0;
    const auto screen = [&, all](const int number) {
        const auto remove = [&, all] {
            change(1);
            finished = all->size();
        };
        return rows({number == 0 ? ui::View{ui::Menu{"Menu", {ui::Button{ui::Label{"Item", "trash"}, remove}}}}
                                 : button("Other")});
    };
    run(screen, [&](Desk& desk) {
        desk.choose("Menu", "Item");
        ASSERT_TRUE(desk.until([&] { return desk.has("Other"); }));
        EXPECT_EQ(finished, 1000u);
        EXPECT_FALSE(desk.has("Menu"));
    });
}

TEST_F(AMenu, OpensBySpaceAndIsLeftByKeysWithFocusWhereItIs) {
    for (const std::string key : {"Return", "Escape"}) {
        run(menuAndNumber(), [this, &key](Desk& desk) {
            openByKey(desk, {tap(desk, "Down"), tapAtItem(desk, key)});
            EXPECT_THAT(chosen_, ElementsAre(0)) << key;
            EXPECT_EQ(desk.focused(), "Menu") << key;
        });
    }
}

TEST_F(AMenu, ThatWasOpenedByKeyClosesWhenItsPlaceIsGoneAndFocusGoesOn) {
    run(menuAtFirst(), [this](Desk& desk) {
        openByKey(desk, {atOnce([this] { change(1); })});
        EXPECT_FALSE(desk.has("Menu"));
        EXPECT_EQ(desk.focused(), "1");
        EXPECT_THAT(chosen_, IsEmpty());
    });
}

TEST_F(AMenu, TellsWhatWasChosenThoughItsPlaceGoesBeforeThat) {
    run(menuAtFirst(), [this](Desk& desk) {
        bool isGone = false;
        standin::onceMenuHasClosed([&] { change(1); }, [&] { isGone = !desk.has("Menu"); });
        openByKey(desk, {tap(desk, "Down"), tapAtItem(desk, "Return")});
        EXPECT_TRUE(isGone);
        EXPECT_THAT(chosen_, ElementsAre(0));
    });
}

} // namespace
} // namespace macos_tests
