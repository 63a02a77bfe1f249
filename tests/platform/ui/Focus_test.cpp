#include "platform/ui/Interaction.h"

#include <algorithm>
#include <random>

namespace platform::ui {
namespace {

/// Control `step` of row `row`, 60 points below the row before.
Control control(const std::uint32_t row, const std::uint32_t step) {
    return {{step * 40.0, row * 60.0, 20, 20}, {{2, row, step}, 2}, "control", PushButton{}, {}};
}

Scene sceneOf(const std::vector<Control>& controls) {
    Scene scene;
    for (const Control& control : controls)
        scene.nodes.push_back({control});
    return scene;
}

constexpr std::uint32_t action = 4;
constexpr std::uint32_t menu = 5;

std::optional<Place> focus(const std::vector<Control>& before, const std::vector<Control>& after,
                           const Control& focused) {
    return focusAfter(sceneOf(before), sceneOf(after), focused.place);
}

TEST(KeyboardFocus, StaysWhereItsControlIsStillThere) {
    const auto all = {control(1, action), control(1, menu)};
    EXPECT_EQ(focus(all, all, control(1, action)), control(1, action).place);
}

TEST(KeyboardFocus, GoesToTheNextOfTheSameRowWhereItsControlIsGone) {
    EXPECT_EQ(focus({control(0, menu), control(1, action), control(1, menu)}, {control(0, menu), control(1, menu)},
                    control(1, action)),
              control(1, menu).place);
}

TEST(KeyboardFocus, GoesToTheOneBeforeWhereItWasTheLastOfItsRow) {
    EXPECT_EQ(focus({control(0, action), control(0, menu), control(1, action)},
                    {control(0, action), control(1, action)}, control(0, menu)),
              control(0, action).place);
}

TEST(KeyboardFocus, GoesToTheNearestWhereItsRowIsGone) {
    EXPECT_EQ(focus({control(0, action), control(1, action), control(9, action)},
                    {control(0, action), control(9, action)}, control(1, action)),
              control(0, action).place);
}

TEST(KeyboardFocus, GoesNowhereWhereThereIsNoControl) {
    EXPECT_EQ(focus({control(0, action)}, {}, control(0, action)), std::nullopt);
}

TEST(AButtonThatGivesWayToAnother, IsGoneAndTheOtherIsNextInItsRow) {
    Control upgrade = control(1, action);
    upgrade.place.steps.push_back(0);
    EXPECT_EQ(focus({control(1, action), control(1, menu)}, {upgrade, control(1, menu)}, control(1, action)),
              upgrade.place);
}

TEST(KeyboardFocus, IsOnAControlThroughAnyNumberOfRebuilds) {
    std::mt19937 random{7};
    std::vector<Control> before{control(0, menu), control(1, menu)};
    Place focused = control(0, menu).place;
    for (int rebuild = 0; rebuild < 1000; ++rebuild) {
        std::vector<Control> after{control(0, menu), control(1, menu)};
        for (const std::uint32_t row : {0u, 1u})
            if (random() % 2 == 0) after.push_back(control(row, action));
        const bool stays =
            std::any_of(after.begin(), after.end(), [&](const Control& c) { return c.place == focused; });
        const auto next = focusAfter(sceneOf(before), sceneOf(after), focused);
        ASSERT_TRUE(next.has_value());
        ASSERT_EQ(*next == focused, stays);
        ASSERT_TRUE(next->inSameRowAs(focused));
        focused = random() % 3 == 0 ? after[random() % after.size()].place : *next;
        before = std::move(after);
    }
}

} // namespace
} // namespace platform::ui
