#include "platform/ui/SceneHost.h"

#include "platform/ui/Elements.h"
#include "tests/support/FixedMetrics.h"
#include "tests/support/SceneText.h"

namespace platform::ui {
namespace {

TEST(TwoScenes, AreEqualIfTheSameIsLaidOut) {
    const auto laidOut = [](const char* image, const double line, const char* item) {
        const VStack screen{Alignment::center, Image::named(image), Circle{}.stroke(Color::gray, line),
                            Menu{"Open", {Button{item, [] {}}}}};
        return layout(screen, Size{100, 60}, fake::FixedMetrics{});
    };
    EXPECT_EQ(laidOut("a", 1, "Go"), laidOut("a", 1, "Go"));
    EXPECT_NE(laidOut("a", 1, "Go"), laidOut("b", 1, "Go"));
    EXPECT_NE(laidOut("a", 1, "Go"), laidOut("a", 2, "Go"));
    EXPECT_NE(laidOut("a", 1, "Go"), laidOut("a", 1, "Stop"));
}

TEST(TwoScenes, AreEqualIfOnlyTheirActionsDiffer) {
    const Control go{{0, 0, 20, 10}, {{1}, 1}, "Go", PushButton{{[] {}}}, {{Fill{}}}};
    const auto sceneWith = [](const Control& control) { return Scene{{}, {}, {{Clip{{}, {}, {{control}}}}}}; };
    const auto changed = [&](const auto& change) {
        Control control = go;
        change(control);
        return sceneWith(control);
    };
    EXPECT_EQ(changed([](Control& control) { control.kind = PushButton{}; }), sceneWith(go));
    EXPECT_NE(changed([](Control& control) { control.kind = PullDownMenu{}; }), sceneWith(go));
    EXPECT_NE(changed([](Control& control) { control.rect.height = 11; }), sceneWith(go));
    EXPECT_NE(changed([](Control& control) { control.place.steps = {2}; }), sceneWith(go));
    EXPECT_NE(changed([](Control& control) { control.place.rowLength = 0; }), sceneWith(go));
    EXPECT_NE(changed([](Control& control) { control.accessibleName = "Stop"; }), sceneWith(go));
    EXPECT_NE(changed([](Control& control) { control.content.clear(); }), sceneWith(go));
    EXPECT_NE((Clip{{}, ShapeKind::circle, {}}), (Clip{{}, ShapeKind::capsule, {}}));
    EXPECT_NE((Clip{{1, 2, 3, 4}, {}, {}}), (Clip{{}, {}, {}}));
}

} // namespace
} // namespace platform::ui
