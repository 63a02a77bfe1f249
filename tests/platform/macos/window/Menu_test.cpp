#include "platform/ui/Elements.h"
#include "tests/macos/gnustep/StandIns.h"
#include "tests/platform/macos/window/ScreenTest.h"
#include "tests/platform/macos/window/WindowTest.h"

namespace macos_tests {
namespace {

namespace ui = platform::ui;

class TheMenuOfACard : public WindowTest {};

TEST_F(TheMenuOfACard, OffersToRefreshAndToRemove) {
    run([](Desk& desk) {
        std::vector<std::string> items;
        desk.pointAt(desk.middleOf("Camera Driver actions"));
        desk.meanwhile({desk.onceMenuIsOpen([&] {
            items = desk.menuItems();
            desk.releaseButton();
        })});
        desk.pressButton();
        ASSERT_TRUE(desk.until([&] { return desk.meanwhileIsOver(); }));
        EXPECT_THAT(items, testing::ElementsAre("Refresh", "Remove"));
    });
}

TEST_F(TheMenuOfACard, AsksForEveryExtensionOnRefresh) {
    run([this](Desk& desk) {
        desk.choose("Camera Driver actions", "Refresh");
        for (const std::string& identifier : {std::string{"com.kelvra.driverkit.base"}, camera, network})
            EXPECT_TRUE(isSubmitted(desk, "properties " + identifier, 2));
    });
}

TEST_F(TheMenuOfACard, DeactivatesItsExtensionOnRemove) {
    run([this](Desk& desk) {
        desk.choose("Network Driver actions", "Remove");
        EXPECT_TRUE(isSubmitted(desk, "deactivation " + network));
        EXPECT_EQ(submitted("deactivation " + camera), 0);
    });
}

TEST_F(TheMenuOfACard, IsOpenStillWhenTheWindowBehindItChanges) {
    run([this](Desk& desk) {
        desk.pointAt(desk.middleOf("Camera Driver actions"));
        desk.meanwhile({desk.onceMenuIsOpen([&] { found(enabled(camera)); }),
                        {"a card that says Enabled", [&] { return desk.shows("Enabled"); }, [] {}},
                        desk.onceAtItem("Remove", [&] { desk.releaseButton(); })});
        desk.pressButton();
        EXPECT_TRUE(isSubmitted(desk, "deactivation " + camera));
    });
}

class AMenu : public ScreenTest {
protected:
    /// A menu whose item tells which number was on the screen that it is of.
    ui::View menu(const int number) {
        return ui::Menu{"Menu",
                        {ui::Button{ui::Label{"Item", "trash"}, [this, number] { chosen_.push_back(number); }}}};
    }

    std::vector<int> chosen_;
};

TEST_F(AMenu, KeepsTheHandlersThatItWasOpenedWithUntilItCloses) {
    run(
        [this](const int number) {
            return rows({menu(number), button(std::to_string(number))});
        },
        [this](Desk& desk) {
            desk.pointAt(desk.middleOf("Menu"));
            desk.meanwhile({desk.onceMenuIsOpen([&] { change(1); }),
                            {"the next scene", [&] { return desk.has("1"); }, [] {}},
                            desk.onceAtItem("Item", [&] { desk.releaseButton(); })});
            desk.pressButton();
            ASSERT_TRUE(desk.until([&] { return chosen_.size() == 1; }));
            ASSERT_TRUE(desk.until(standin::isAtRest)); // the next thing that a person does comes later
            desk.choose("Menu", "Item");
            ASSERT_TRUE(desk.until([&] { return chosen_.size() == 2; }));
            EXPECT_THAT(chosen_, testing::ElementsAre(0, 1));
        });
}

TEST_F(AMenu, HasTheHandlersOfTheLatestSceneWhenItOpens) {
    run(
        [this](const int number) {
            return rows({menu(number), button(std::to_string(number))});
        },
        [this](Desk& desk) {
            change(1);
            ASSERT_TRUE(desk.until([&] { return desk.has("1"); }));
            desk.choose("Menu", "Item");
            ASSERT_TRUE(desk.until([&] { return !chosen_.empty(); }));
            EXPECT_THAT(chosen_, testing::ElementsAre(1));
        });
}

TEST_F(AMenu, ClosesWhenItsPlaceIsGone) {
    const auto screen = [this](const int number) {
        return rows({number == 0 ? menu(0) : ui::View{ui::EmptyView{}}, button(std::to_string(number))});
    };
    run(screen, [this](Desk& desk) {
        desk.pointAt(desk.middleOf("Menu"));
        desk.meanwhile({desk.onceMenuIsOpen([&] { change(1); })});
        desk.pressButton();
        ASSERT_TRUE(desk.until([&] { return desk.has("1") && desk.menuItems().empty(); }));
        desk.releaseButton();
        desk.click("1");
        EXPECT_TRUE(desk.until([&] { return pressed("1") == 1; }));
        EXPECT_TRUE(chosen_.empty());
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

} // namespace
} // namespace macos_tests
