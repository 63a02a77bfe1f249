#include "platform/linux/ScenePainter.h"
#include "platform/ui/SceneHost.h"
#include "tests/platform/linux/window/WindowTest.h"
#include "tests/support/FixedMetrics.h"
#include "tests/support/PlainPicture.h"
#include "tests/support/ScreenStates.h"

#include <gmock/gmock.h>

namespace platform {
namespace {

class EveryPixel : public WindowTest, public testing::WithParamInterface<fake::ScreenState> {
protected:
    ui::Scene sceneIn(const ui::Metrics& metrics) const {
        return ui::layout(fake::screenOf(GetParam()), std::nullopt, metrics);
    }
    std::vector<std::string> differences(const ui::Scene& scene, const std::vector<ui::Rect>& leftOut = {}) {
        window_.present(scene);
        const QImage seen = picture();
        const auto at = [&](const int x, const int y) -> fake::PlainPicture::Channels {
            const QColor colour = seen.pixelColor(x, y);
            return {1.0 * colour.red(), 1.0 * colour.green(), 1.0 * colour.blue()};
        };
        return fake::PlainPicture{scene}.differences(at, leftOut);
    }
};

TEST_P(EveryPixel, IsThatOfTheSceneWhereTextsAreMeasuredAlike) {
    const fake::FixedMetrics metrics;
    EXPECT_THAT(differences(fake::withoutTextsAndImages(sceneIn(metrics))), testing::IsEmpty());
}

TEST_P(EveryPixel, IsThatOfTheSceneButInTextsAndImages) {
    const ui::Scene scene = sceneIn(QtMetrics{images_});
    EXPECT_THAT(differences(scene, fake::textsAndImages(scene)), testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(OfTheScreen, EveryPixel, testing::ValuesIn(fake::screenStates()),
                         [](const auto& state) { return state.param.name; });

} // namespace
} // namespace platform
