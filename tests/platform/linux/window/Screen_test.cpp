#include "platform/linux/ScenePainter.h"
#include "platform/ui/SceneHost.h"
#include "tests/platform/linux/window/WindowTest.h"
#include "tests/support/FixedMetrics.h"
#include "tests/support/PlainPicture.h"
#include "tests/support/ScreenStates.h"

namespace platform {
namespace {

/// Calls `visit` with everything that is painted, including the contents of clips and controls.
template <typename Visit>
void forEach(const std::vector<ui::SceneNode>& nodes, const Visit& visit) {
    const auto visitWithContent = [&](const auto& value) {
        visit(value);
        if constexpr (requires { value.content; }) forEach(value.content, visit);
    };
    for (const ui::SceneNode& node : nodes)
        std::visit(visitWithContent, node.value);
}

class TheScreen : public WindowTest, public testing::WithParamInterface<fake::ScreenState> {};

TEST_P(TheScreen, TruncatesNothingInTheTypefaceOfThisWindow) {
    const QtMetrics metrics{images_};
    forEach(ui::layout(fake::screenOf(GetParam()), std::nullopt, metrics).nodes,
            ui::Cases{[](const ui::TextRun& run) { EXPECT_FALSE(run.truncated) << run.text; }, [](const auto&) {}});
}

TEST_P(TheScreen, MatchesItsScenePixelByPixel) {
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

INSTANTIATE_TEST_SUITE_P(InEachState, TheScreen, testing::ValuesIn(fake::screenStates()),
                         [](const auto& state) { return state.param.name; });

} // namespace
} // namespace platform
