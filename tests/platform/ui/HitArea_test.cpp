#include "platform/ui/Interaction.h"

namespace platform::ui {
namespace {

Control button(const std::uint32_t step, const Rect& rect) {
    return {rect, {{step}, 0}, "button", PushButton{}, {}};
}

/// A menu of 10 by 10 at 100, 100, and where a press counts for it beside a button at `neighbour`.
Rect areaOfMenuBeside(const Rect& neighbour) {
    const Control menu{{100, 100, 10, 10}, {{1}, 0}, "menu", PullDownMenu{}, {}};
    return hitArea(Scene{{}, {}, {{menu}, {button(2, neighbour)}}}, menu);
}

TEST(APressOnAMenu, CountsEightPointsAroundItsIndicator) {
    EXPECT_EQ(areaOfMenuBeside({0, 0, 10, 10}), (Rect{92, 92, 26, 26}));
}

TEST(APressOnAMenu, DoesNotCountOnAControlToItsLeft) {
    EXPECT_EQ(areaOfMenuBeside({60, 90, 35, 30}), (Rect{95, 92, 23, 26}));
}

TEST(APressOnAMenu, DoesNotCountOnAControlToItsRight) {
    EXPECT_EQ(areaOfMenuBeside({113, 90, 35, 30}), (Rect{92, 92, 21, 26}));
}

TEST(APressOnAMenu, DoesNotCountOnAControlAboveIt) {
    EXPECT_EQ(areaOfMenuBeside({90, 60, 30, 37}), (Rect{92, 97, 26, 21}));
}

TEST(APressOnAMenu, DoesNotCountOnAControlBelowIt) {
    EXPECT_EQ(areaOfMenuBeside({90, 112, 30, 30}), (Rect{92, 92, 26, 20}));
}

TEST(APressOnAMenu, CountsOnItsIndicatorWhereTheNeighbourTouchesIt) {
    EXPECT_EQ(areaOfMenuBeside({60, 90, 40, 30}), (Rect{100, 92, 18, 26}));
}

TEST(APressOnAButton, CountsOnTheButtonAlone) {
    const Control own = button(1, {100, 100, 80, 30});
    EXPECT_EQ(hitArea(Scene{{}, {}, {{own}}}, own), own.rect);
}

} // namespace
} // namespace platform::ui
