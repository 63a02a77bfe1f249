#include "platform/ui/Layout.h"
#include "platform/ui/Text.h"
#include "tests/support/FixedMetrics.h"
#include "views/KelvraButton.h"
#include "views/KelvraIcon.h"

namespace views {
namespace {

std::string scene(const platform::ui::View& view) {
    const platform::fake::FixedMetrics metrics;
    return describe(layout(view, platform::ui::Size{40, 40}, metrics));
}

TEST(TheIcon, IsTheNamedAssetInARingWhereItIsNotDark) {
    EXPECT_EQ(scene(KelvraIcon{"VideoCamera", false}.body()), "stroke circle 2,2 36x36 black 2\n"
                                                              "image 9,9 22x22 \"VideoCamera\"\n");
}

TEST(TheIcon, IsTheDarkAssetOnADiscWhereItIsDark) {
    EXPECT_EQ(scene(KelvraIcon{"VideoCamera", true}.body()), "clip circle 0,0 40x40\n"
                                                             "  fill rectangle 0,0 40x40 black\n"
                                                             "  image 9,9 22x22 \"VideoCameraDark\"\n");
}

TEST(TheIcon, HasItsRingOrDiscAtFullSizeWhetherItsImageIsThereOrMissing) {
    platform::fake::FixedMetrics metrics;
    metrics.images = {{"Huge", {512, 300}}, {"HugeDark", {512, 300}}};
    const auto sizeOf = [&](const std::string& iconName, const bool dark) {
        return layout(KelvraIcon{iconName, dark}.body(), std::nullopt, metrics).size;
    };
    for (const bool dark : {false, true}) {
        EXPECT_EQ(sizeOf("Huge", dark), (platform::ui::Size{40, 40}));
        EXPECT_EQ(sizeOf("Missing", dark), (platform::ui::Size{40, 40}));
    }
}

TEST(TheIcon, AppliesTheModifiersOfTheDarkVariantInOrder) {
    EXPECT_EQ(describe(KelvraIconDark{"Ethernet"}.body()), "Image \"EthernetDark\"\n"
                                                           "  .resizable\n"
                                                           "  .frame width 22 height 22 center\n"
                                                           "  .padding all 9\n"
                                                           "  .background black under safe area\n"
                                                           "  .clipShape circle\n");
}

TEST(TheIcon, AppliesTheModifiersOfTheDefaultVariantInOrder) {
    EXPECT_EQ(describe(KelvraIconDefault{"Ethernet"}.body()), "Image \"Ethernet\"\n"
                                                              "  .resizable\n"
                                                              "  .frame width 22 height 22 center\n"
                                                              "  .padding all 9\n"
                                                              "  .background of\n"
                                                              "  Circle\n"
                                                              "    .stroke black 2\n"
                                                              "    .padding all 2\n");
}

TEST(TheButtonStyle, AppliesItsModifiersInOrder) {
    EXPECT_EQ(describe(KelvraButton{}.makeBody({platform::ui::Text::localized("Activate")})),
              "Text localized \"Activate\"\n"
              "  .padding horizontal 18\n"
              "  .padding vertical 7\n"
              "  .background black under safe area\n"
              "  .foregroundColor white\n"
              "  .clipShape capsule\n"
              "  .font body\n");
}

} // namespace
} // namespace views
