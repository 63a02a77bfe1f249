#include "app/DriverManagerApp.h"

#include "platform/linux/ScenePainter.h"
#include "platform/ui/SceneHost.h"
#include "tests/platform/linux/window/WindowTest.h"
#include "tests/support/FixedMetrics.h"
#include "tests/support/PlainPicture.h"
#include "tests/support/ScreenStates.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace platform {
namespace {

/// Calls `visit` with everything that is painted, what is inside clips and controls too.
template <typename Visit>
void forEach(const std::vector<ui::SceneNode>& nodes, const Visit& visit) {
    const auto visitWithContent = [&](const auto& value) {
        visit(value);
        if constexpr (requires { value.content; }) forEach(value.content, visit);
    };
    for (const ui::SceneNode& node : nodes)
        std::visit(visitWithContent, node.value);
}

bool isNear(const ui::Rect& a, const ui::Rect& b) {
    return std::max({std::abs(a.x - b.x), std::abs(a.y - b.y), std::abs(a.width - b.width),
                     std::abs(a.height - b.height)}) <= 0.5;
}

/// The screen in the typeface of this window, before any answer has come.
class TheScreen : public testing::Test {
protected:
    fake::FreshServices services_;
    TestApplication application_;
    ImageStore images_{QStringLiteral(ICONS)};
    QtMetrics metrics_{images_};
    ui::Scene scene_ = ui::layout(app::DriverManagerApp{}.body().content(), std::nullopt, metrics_);
};

TEST_F(TheScreen, StandsWhereItsRulesPutIt) {
    std::vector<ui::Rect> rects;
    forEach(scene_.nodes, [&](const auto& painted) { rects.push_back(painted.rect); });
    const double button = metrics_.textSize("Activate", ui::Font::body).width + 36;
    const std::array expected{
        ui::Rect{0, 0, 450, 40},      ui::Rect{16, 10, 20, 20},      ui::Rect{25, 68, 400, 134},
        ui::Rect{26, 69, 398, 132},   ui::Rect{25, 76, 400, 50.5},   ui::Rect{25, 143.5, 400, 50.5},
        ui::Rect{25, 134.5, 400, 1},  ui::Rect{51, 83.25, 36, 36},   ui::Rect{51, 150.75, 36, 36},
        ui::Rect{391, 93.25, 10, 16}, ui::Rect{391, 160.75, 10, 16}, ui::Rect{383 - button, 153.75, button, 30}};
    EXPECT_EQ(scene_.size, (ui::Size{450, 230}));
    for (const ui::Rect& rect : expected)
        EXPECT_TRUE(std::any_of(rects.begin(), rects.end(), [&](const auto& found) { return isNear(found, rect); }))
            << rect.x << "," << rect.y << " " << rect.width << "x" << rect.height;
}

TEST_F(TheScreen, TruncatesNothing) {
    forEach(scene_.nodes,
            ui::Cases{[](const ui::TextRun& run) { EXPECT_FALSE(run.truncated) << run.text; }, [](const auto&) {}});
}

class EveryPixel : public WindowTest, public testing::WithParamInterface<fake::ScreenState> {};

TEST_P(EveryPixel, IsThatOfTheScene) {
    const ui::Scene scene =
        fake::withoutTextsAndImages(ui::layout(fake::screenOf(GetParam()), std::nullopt, fake::FixedMetrics{}));
    window_.present(scene);
    const QImage seen = picture();
    const auto at = [&](const int x, const int y) -> fake::PlainPicture::Channels {
        const QColor color = seen.pixelColor(x, y);
        return {1.0 * color.red(), 1.0 * color.green(), 1.0 * color.blue()};
    };
    EXPECT_THAT(fake::PlainPicture{scene}.differences(at), testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(OfTheScreen, EveryPixel, testing::ValuesIn(fake::screenStates()),
                         [](const auto& state) { return state.param.name; });

} // namespace
} // namespace platform
