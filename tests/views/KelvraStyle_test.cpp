#include "platform/ui/Elements.h"
#include "platform/ui/SceneHost.h"
#include "tests/support/FixedMetrics.h"
#include "tests/support/SceneText.h"
#include "views/KelvraButton.h"
#include "views/KelvraIcon.h"

namespace views {
namespace {

std::string scene(const platform::ui::View& view) {
    const platform::fake::FixedMetrics metrics;
    return platform::fake::textOf(layout(view, platform::ui::Size{40, 40}, metrics));
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

} // namespace
} // namespace views
