#include "views/StatusView.h"

#include "platform/ui/SceneHost.h"
#include "tests/support/FakeWindow.h"
#include "tests/support/SceneText.h"

namespace views {
namespace {

using model::InstallStatus;

StatusView banner(const InstallStatus status) {
    return {status, "not yet", "done", "waiting"};
}

std::string scene(const StatusView& view) {
    const platform::fake::FixedMetrics metrics;
    return platform::fake::textOf(layout(view.body(), platform::ui::Size{450, 40}, metrics));
}

TEST(TheBanner, ShowsTheCheckMarkAndTheActivatedTextWhereAllAreEnabled) {
    EXPECT_EQ(scene(banner(InstallStatus::allEnabled)),
              "fill rectangle 0,0 450x40 182/183/126\n"
              "image 16,10 20x20 system black \"checkmark.circle.fill\" named \"Ready\"\n"
              "text 44,12.5 21.6x15 callout black \"done\" announced\n");
}

TEST(TheBanner, ShowsTheExclamationMarkAndTheOrangeTextWhereApprovalIsAwaited) {
    EXPECT_EQ(scene(banner(InstallStatus::awaitingAllow)),
              "fill rectangle 0,0 450x40 235/110/61\n"
              "image 16,10 20x20 system black \"exclamationmark.circle.fill\" named \"Attention\"\n"
              "text 44,12.5 37.8x15 callout black \"waiting\" announced\n");
}

TEST(TheBanner, DiffersInNothingButSentenceAndColourWhereNothingIsInstalled) {
    EXPECT_EQ(scene(banner(InstallStatus::nothingInstalled)),
              "fill rectangle 0,0 450x40 230/198/105\n"
              "image 16,10 20x20 system black \"exclamationmark.circle.fill\" named \"Attention\"\n"
              "text 44,12.5 37.8x15 callout black \"not yet\" announced\n");
}

TEST(TheBanner, IsFortyHighWithItsIconAlsoWhereTheTextsAreEmpty) {
    EXPECT_EQ(scene({InstallStatus::allEnabled, "", "", ""}),
              "fill rectangle 0,0 450x40 182/183/126\n"
              "image 16,10 20x20 system black \"checkmark.circle.fill\" named \"Ready\"\n"
              "text 44,12.5 0x15 callout black \"\" announced\n");
}

TEST(TheBanner, RunsOnUnderATitleBar) {
    const platform::fake::FixedMetrics metrics;
    const auto scene =
        layout(banner(InstallStatus::allEnabled).body(), platform::ui::Size{450, 40}, metrics, {28, 0, 0, 0});
    EXPECT_EQ(std::get<platform::ui::Fill>(scene.nodes.front().value).rect, (platform::ui::Rect{0, -28, 450, 68}));
}

} // namespace
} // namespace views
