#include "platform/ui/View.h"

#include "platform/ui/Button.h"
#include "platform/ui/ButtonStyle.h"
#include "platform/ui/Divider.h"
#include "platform/ui/ForEach.h"
#include "platform/ui/HStack.h"
#include "platform/ui/Image.h"
#include "platform/ui/Menu.h"
#include "platform/ui/Scene.h"
#include "platform/ui/Shape.h"
#include "platform/ui/Spacer.h"
#include "platform/ui/Text.h"

#include <type_traits>

namespace platform::ui {
namespace {

Scene sceneOf(Control control) {
    Scene scene;
    scene.nodes.push_back({std::move(control)});
    return scene;
}

static_assert(std::is_copy_constructible_v<View> && std::is_nothrow_move_constructible_v<View>);

TEST(ADescription, ListsModifiersInTheOrderApplied) {
    EXPECT_EQ(describe(Image::named("Ethernet").resizable().frame({.width = 22, .height = 22}).padding(9)),
              "Image \"Ethernet\"\n"
              "  .resizable\n"
              "  .frame width 22 height 22 center\n"
              "  .padding all 9\n");
}

TEST(ADescription, IndentsChildrenBelowTheirStack) {
    EXPECT_EQ(describe(HStack{VerticalAlignment::center, Text::verbatim("a"), Spacer{}}.font(Font::callout)),
              "HStack center\n"
              "  Text verbatim \"a\"\n"
              "  Spacer\n"
              "  .font callout\n");
}

TEST(ADescription, KeepsModifiersThatHaveNoEffect) {
    EXPECT_EQ(describe(Divider{}
                           .groupBoxStyle(DefaultGroupBoxStyle{})
                           .menuStyle(BorderlessButtonMenuStyle{})
                           .preferredColorScheme(ColorScheme::light)),
              "Divider\n"
              "  .groupBoxStyle DefaultGroupBoxStyle\n"
              "  .menuStyle BorderlessButtonMenuStyle\n"
              "  .preferredColorScheme light\n");
}

TEST(AView, IsNotChangedByAModifier) {
    const View text = Text::verbatim("a");
    const View padded = text.padding();
    EXPECT_EQ(describe(text), "Text verbatim \"a\"\n");
    EXPECT_NE(describe(padded), describe(text));
}

TEST(TwoScenes, AreEqualWhereOnlyTheirActionsDiffer) {
    Control control;
    control.accessibleName = "Go";
    control.action = {[] {}};
    Control other = control;
    other.action = {};
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
