#include "platform/macos/AppKitMetrics.h"
#include "platform/macos/ImageStore.h"
#include "platform/macos/MainWindow.h"
#include "platform/ui/Interaction.h"
#include "platform/ui/SceneHost.h"
#include "tests/macos/gnustep/Desk.h"
#include "tests/support/FixedMetrics.h"
#include "tests/support/PlainPicture.h"
#include "tests/support/ScreenStates.h"

#import <AppKit/AppKit.h>

#include <gmock/gmock.h>

namespace macos_tests {
namespace {

namespace fake = platform::fake;
namespace ui = platform::ui;

using Differences = std::vector<std::string>;

/// A scene in the native window, without an application around it.
class ThePixels : public testing::Test {
protected:
    ThePixels() : images_{IMAGES} {}

    /// Shows what `make` yields for the window's safe area, and runs `body` in front of it.
    void show(const std::function<ui::Scene(const ui::EdgeInsets&)>& make,
              const std::function<void(Desk&, const ui::Scene&)>& body) const {
        ui::Scene scene;
        const auto showing = [&] {
            @autoreleasepool {
                platform::MainWindow window{"Driver Manager", images_};
                scene = make(window.safeArea());
                window.present(scene);
                window.show();
                [NSApp run];
            }
            return 0;
        };
        Desk::run([&](Desk& desk) { body(desk, scene); }, showing);
    }
    /// Where the window differs from what has to be seen of the scene.
    static Differences differences(Desk& desk, const ui::Scene& scene, const std::vector<ui::Rect>& leftOut = {}) {
        return differences(desk.picture(static_cast<int>(scene.safeArea.top)), fake::PlainPicture{scene}, leftOut);
    }
    static Differences differences(const Picture& seen, const fake::PlainPicture& scene,
                                   const std::vector<ui::Rect>& leftOut = {}) {
        const auto at = [&](const int x, const int y) -> fake::PlainPicture::Channels {
            const Rgb colour = seen.at(x, y);
            return {1.0 * colour.red, 1.0 * colour.green, 1.0 * colour.blue};
        };
        return scene.differences(at, leftOut);
    }

    const platform::ImageStore images_;
    const fake::FixedMetrics metrics_;
};

TEST_F(ThePixels, AreTheSameWithFocusOnAControl) {
    const auto make = [&](const ui::EdgeInsets& safeArea) {
        const auto screen = fake::screenOf(fake::screenStates().front());
        return fake::withoutTextsAndImages(ui::layout(screen, std::nullopt, metrics_, safeArea));
    };
    show(make, [](Desk& desk, const ui::Scene& scene) {
        const fake::PlainPicture expected{scene};
        for (const ui::Control* control : ui::controlsOf(scene)) {
            desk.tapKey("Tab");
            ASSERT_TRUE(desk.until([&] { return desk.focused() == control->accessibleName; }));
            const Picture seen = desk.picture(static_cast<int>(scene.safeArea.top));
            EXPECT_THAT(differences(seen, expected), testing::IsEmpty()) << control->accessibleName;
        }
    });
}

class EveryPixel : public ThePixels, public testing::WithParamInterface<fake::ScreenState> {
protected:
    ui::Scene sceneIn(const ui::EdgeInsets& safeArea, const ui::Metrics& metrics) const {
        return ui::layout(fake::screenOf(GetParam()), std::nullopt, metrics, safeArea);
    }
};

TEST_P(EveryPixel, IsThatOfTheSceneWhereTextsAreMeasuredAlike) {
    const auto make = [&](const ui::EdgeInsets& safeArea) {
        return fake::withoutTextsAndImages(sceneIn(safeArea, metrics_));
    };
    show(make, [](Desk& desk, const ui::Scene& scene) { EXPECT_THAT(differences(desk, scene), testing::IsEmpty()); });
}

TEST_P(EveryPixel, IsThatOfTheSceneButInTextsAndImages) {
    const platform::AppKitMetrics metrics{images_};
    const auto make = [&](const ui::EdgeInsets& safeArea) { return sceneIn(safeArea, metrics); };
    show(make, [](Desk& desk, const ui::Scene& scene) {
        EXPECT_THAT(differences(desk, scene, fake::textsAndImages(scene)), testing::IsEmpty());
    });
}

INSTANTIATE_TEST_SUITE_P(OfTheScreen, EveryPixel, testing::ValuesIn(fake::screenStates()),
                         [](const auto& state) { return state.param.name; });

} // namespace
} // namespace macos_tests
