#include "platform/ui/View.h"

#include "platform/ui/Elements.h"
#include "platform/ui/Scene.h"

#include <type_traits>

namespace platform::ui {
namespace {

Scene sceneOf(Control control) {
    Scene scene;
    scene.nodes.push_back({std::move(control)});
    return scene;
}

static_assert(std::is_copy_constructible_v<View> && std::is_nothrow_move_constructible_v<View>);

TEST(TwoScenes, AreEqualWhereOnlyTheirActionsDiffer) {
    Control control;
    control.accessibleName = "Go";
    control.kind = PushButton{{[] {}}};
    Control other = control;
    other.kind = PushButton{};
    EXPECT_EQ(sceneOf(control), sceneOf(other));
}

TEST(TwoScenes, DifferWhereAControlStandsAtAnotherPlace) {
    Control control;
    Control other;
    other.place.steps = {1};
    EXPECT_NE(sceneOf(control), sceneOf(other));
}

} // namespace
} // namespace platform::ui
