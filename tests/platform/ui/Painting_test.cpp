#include "platform/ui/Painting.h"

#include "tests/support/SceneText.h"

namespace platform::ui {
namespace {

TEST(ThePixelGrid, RoundsEdgesToTheNearestPixelAndHalvesUp) {
    const PixelGrid whole{1};
    EXPECT_EQ(whole.snapped(1.49), 1);
    EXPECT_EQ(whole.snapped(1.5), 2);
    EXPECT_EQ(whole.snapped(-1.5), -1);
    EXPECT_EQ(PixelGrid{2}.snapped(1.3), 1.5);
    EXPECT_EQ(PixelGrid{2}.snapped(1.25), 1.5);
}

TEST(ThePixelGrid, RoundsEachEdgeSoThatNeighborsStillTouch) {
    const PixelGrid grid{1};
    const Rect left = grid.snapped(Rect{0.4, 10.5, 10.3, 5.2});
    EXPECT_EQ(left, (Rect{0, 11, 11, 5}));
    EXPECT_EQ(grid.snapped(Rect{10.7, 0, 4.6, 1}).x, left.maxX());
}

TEST(ThePixelGrid, RoundsLineWidthsToWholePixelsAndAtLeastOne) {
    EXPECT_EQ(PixelGrid{1}.lineWidth(0.2), 1);
    EXPECT_EQ(PixelGrid{1}.lineWidth(2.4), 2);
    EXPECT_EQ(PixelGrid{1}.lineWidth(2.5), 3);
    EXPECT_EQ(PixelGrid{4}.lineWidth(0.4), 0.5);
}

TEST(ThePixelGrid, CountsPixels) {
    EXPECT_EQ(PixelGrid{1.5}.pixels(4), 6);
    EXPECT_EQ(PixelGrid{1.5}.scale(), 1.5);
}

TEST(AnOutline, IsOnTheGridWithACircleInTheLargestCenteredSquare) {
    const PixelGrid grid{1};
    const Rect lying{10.4, 20.4, 40.4, 15.4};
    EXPECT_EQ(outlineOf(ShapeKind::rectangle, lying, grid), (Outline{ShapeKind::rectangle, {10, 20, 41, 16}}));
    EXPECT_EQ(outlineOf(ShapeKind::capsule, lying, grid), (Outline{ShapeKind::capsule, {10, 20, 41, 16}}));
    EXPECT_EQ(outlineOf(ShapeKind::circle, lying, grid), (Outline{ShapeKind::circle, {23, 20, 15, 15}}));
    EXPECT_EQ(outlineOf(ShapeKind::circle, {10.4, 20.4, 15.6, 40.4}, grid).rect, (Rect{10, 33, 16, 16}));
}

TEST(AnOutline, HasTheLargestPossibleRadiusAsACapsule) {
    EXPECT_EQ((Outline{ShapeKind::capsule, {0, 0, 40, 16}}.cornerRadius()), 8);
    EXPECT_EQ((Outline{ShapeKind::capsule, {0, 0, 12, 16}}.cornerRadius()), 6);
}

TEST(AnOutline, GrowsOnEverySide) {
    EXPECT_EQ((Outline{ShapeKind::circle, {10, 20, 40, 16}}.grown(3)), (Outline{ShapeKind::circle, {7, 17, 46, 22}}));
}

TEST(AStroke, HasItsOuterEdgeOnTheGridAndAWidthInWholePixels) {
    const auto border = outlineOf(Stroke{{26, 69, 398, 132}, ShapeKind::rectangle, Color::black, 2}, PixelGrid{1});
    EXPECT_EQ(border.path, (Outline{ShapeKind::rectangle, {26, 69, 398, 132}}));
    EXPECT_EQ(border.lineWidth, 2);
    const auto fine = outlineOf(Stroke{{10.25, 20.25, 30, 15}, ShapeKind::capsule, Color::black, 1.3}, PixelGrid{1});
    EXPECT_EQ(fine.path, (Outline{ShapeKind::capsule, {10.5, 20.5, 30, 15}}));
    EXPECT_EQ(fine.lineWidth, 1);
    const auto ring = outlineOf(Stroke{{51, 83.25, 36, 36}, ShapeKind::circle, Color::black, 2}, PixelGrid{1});
    EXPECT_EQ(ring.path, (Outline{ShapeKind::circle, {51, 83, 36, 36}}));
}

TEST(TheLookOfAControl, IsItsFirstClipOrIndicatorOrElseItsRectangle) {
    Control control{{0, 0, 50, 40}, {}, "control", PushButton{}, {{Fill{{1, 2, 3, 4}, {}, {}}}}};
    EXPECT_EQ(lookOf(control), (Outline{ShapeKind::rectangle, {0, 0, 50, 40}}));
    control.content.push_back({Clip{{1, 2, 30, 20}, ShapeKind::capsule, {}}});
    control.content.push_back({MenuIndicator{}});
    EXPECT_EQ(lookOf(control), (Outline{ShapeKind::capsule, {1, 2, 30, 20}}));
    control.content = {{MenuIndicator{{20, 12, 10, 16}, Color::black}}};
    EXPECT_EQ(lookOf(control), (Outline{ShapeKind::rectangle, {20, 12, 10, 16}}));
}

TEST(TheIndicatorOfAMenu, PointsDownToATipOnTheGridBelowItsMiddle) {
    const IndicatorLine line = lineOf(MenuIndicator{{391, 93.25, 10, 16}, Color::black}, PixelGrid{1});
    EXPECT_EQ(line.points, (std::array<Point, 3>{Point{392.5, 99.5}, Point{396, 103}, Point{399.5, 99.5}}));
    EXPECT_EQ(line.lineWidth, 1.5);
}

TEST(TheGroundOfAWindow, IsLightGray) {
    EXPECT_EQ(fake::textOf(windowGround), "236/236/236");
}

} // namespace
} // namespace platform::ui
