#include "platform/macos/ImageStore.h"
#include "platform/macos/MainWindow.h"
#include "platform/ui/Interaction.h"
#include "platform/ui/Painting.h"
#include "platform/ui/SceneHost.h"
#include "tests/macos/gnustep/StandIns.h"
#include "tests/platform/macos/window/WindowTest.h"
#include "tests/support/FixedMetrics.h"
#include "tests/support/PlainPicture.h"
#include "tests/support/ScreenStates.h"

#import <AppKit/AppKit.h>

namespace macos_tests {
namespace {

namespace fake = platform::fake;
namespace ui = platform::ui;

using TheScene = WindowTest;

TEST_F(TheScene, TellsWhatEachOfItIsInReadingOrder) {
    run([](Desk& desk) {
        std::vector<std::string> seen;
        for (const Element& element : desk.elements())
            seen.push_back(element.role + ": " + (element.label.empty() ? element.value : element.label));
        const std::vector<std::string> expected{
            "NSAccessibilityImageRole: Attention",
            "NSAccessibilityStaticTextRole: Both drivers need to be activated to run the camera",
            "NSAccessibilityImageRole: Camera Driver, not enabled",
            "NSAccessibilityStaticTextRole: Camera Driver",
            "NSAccessibilityStaticTextRole: Not installed",
            "NSAccessibilityButtonRole: Activate Camera Driver",
            "NSAccessibilityMenuButtonRole: Camera Driver actions",
            "NSAccessibilityImageRole: Network Driver, not enabled",
            "NSAccessibilityStaticTextRole: Network Driver",
            "NSAccessibilityStaticTextRole: Not installed",
            "NSAccessibilityButtonRole: Activate Network Driver",
            "NSAccessibilityMenuButtonRole: Network Driver actions",
        };
        EXPECT_EQ(seen, expected);
    });
}

TEST_F(TheScene, TellsOfAPointWhatIsThere) {
    run([](Desk& desk) {
        for (const Element& element : desk.elements()) {
            const ui::Rect& rect = element.rect;
            EXPECT_EQ(desk.elementAt({rect.x + rect.width / 2, rect.y + rect.height / 2}), element) << element.label;
        }
        EXPECT_EQ(desk.elementAt({20, 215}), std::nullopt);
        EXPECT_TRUE(desk.areInTheWindow());
    });
}

TEST_F(TheScene, AnnouncesItsBannerOnceWhenItChangesAndNothingAtFirst) {
    run([this](Desk& desk) {
        EXPECT_THAT(standin::announcements(), testing::IsEmpty());
        const std::string first = desk.texts().front();
        found(waiting(camera));
        ASSERT_TRUE(comesToShow(desk, "Await approval"));
        found(enabled(network));
        ASSERT_TRUE(comesToShow(desk, "Enabled"));
        ASSERT_NE(desk.texts().front(), first);
        EXPECT_THAT(standin::announcements(), testing::ElementsAre(desk.texts().front()));
    });
}

/// One state of the screen in the native window, without an application around it, where texts are measured as in
/// every other test.
class TheScreen : public testing::TestWithParam<fake::ScreenState> {
protected:
    using Body = std::function<void(Desk&, const ui::Scene&)>;
    using Change = std::function<ui::Scene(ui::Scene)>;

    static void show(const fake::ScreenState& state, const Change& change, const Body& body) {
        ui::Scene scene;
        const auto showing = [&] {
            @autoreleasepool {
                const platform::ImageStore images{IMAGES};
                const fake::FixedMetrics metrics;
                platform::MainWindow window{"Driver Manager", images};
                scene = change(ui::layout(fake::screenOf(state), std::nullopt, metrics, window.safeArea()));
                window.present(scene);
                window.show();
                [NSApp run];
            }
            return 0;
        };
        Desk::run([&](Desk& desk) { body(desk, scene); }, showing);
    }
    static ui::Scene unchanged(ui::Scene scene) { return scene; }

    /// Where the window differs from what has to be seen of the scene.
    static std::vector<std::string> differences(Desk& desk, const ui::Scene& scene) {
        return differences(desk.picture(static_cast<int>(scene.safeArea.top)), scene);
    }
    static std::vector<std::string> differences(const Picture& seen, const ui::Scene& scene) {
        const auto at = [&](const int x, const int y) -> fake::PlainPicture::Channels {
            const Rgb pixel = seen.at(x, y);
            return {1.0 * pixel.red, 1.0 * pixel.green, 1.0 * pixel.blue};
        };
        return fake::PlainPicture{scene}.differences(at);
    }
};

TEST_P(TheScreen, IsPaintedPixelByPixelAsItsSceneSaysAlsoUnderTheTitleBar) {
    show(GetParam(), fake::withoutTextsAndImages,
         [](Desk& desk, const ui::Scene& scene) { EXPECT_THAT(differences(desk, scene), testing::IsEmpty()); });
}

INSTANTIATE_TEST_SUITE_P(InEachState, TheScreen, testing::ValuesIn(fake::screenStates()),
                         [](const auto& state) { return state.param.name; });

class AControl : public TheScreen {};

TEST_F(AControl, IsPaintedTheSameWithFocusOnIt) {
    const auto look = [](Desk& desk, const ui::Scene& scene) {
        for (const ui::Control* control : ui::controlsOf(scene)) {
            desk.tapKey("Tab");
            ASSERT_TRUE(comesToFocus(desk, control->accessibleName));
            EXPECT_THAT(differences(desk, scene), testing::IsEmpty()) << control->accessibleName;
        }
    };
    show(fake::screenStates().front(), fake::withoutTextsAndImages, look);
}

TEST_F(AControl, LiesWhereAPressCountsAndEverythingElseWhereItIsSeen) {
    const auto look = [](Desk& desk, const ui::Scene& scene) {
        std::vector<ui::Rect> seen;
        for (const Element& element : desk.elements())
            seen.push_back(element.rect);
        std::vector<ui::Rect> expected;
        for (const ui::Readable& readable : ui::readingOrder(scene))
            expected.push_back(
                std::visit(ui::Cases{[&](const ui::Control* control) { return ui::hitArea(scene, *control); },
                                     [](const auto* run) { return run->rect; }},
                           readable));
        EXPECT_EQ(seen, expected);
    };
    show(fake::screenStates().front(), unchanged, look);
}

TEST_F(AControl, HasAFocusRingOfTheShapeThatIsSeenOfIt) {
    const auto look = [](Desk& desk, const ui::Scene& scene) {
        for (const ui::Control* control : ui::controlsOf(scene)) {
            const ui::Rect area = ui::hitArea(scene, *control);
            const ui::Outline look = ui::lookOf(*control);
            const ui::Rect bounds{look.rect.x - area.x, look.rect.y - area.y, look.rect.width, look.rect.height};
            EXPECT_EQ(desk.focusRingOf(control->accessibleName), bounds) << control->accessibleName;
            const Picture seen = desk.focusRingMaskOf(control->accessibleName);
            const ui::Rect ground{0, -scene.safeArea.top, scene.size.width, scene.safeArea.top + scene.size.height};
            ui::Scene mask = scene;
            mask.nodes = {{ui::Fill{ground, ui::ShapeKind::rectangle, ui::Color::white}},
                          {ui::Fill{look.rect, look.shape, ui::Color::black}}};
            EXPECT_THAT(differences(seen, mask), testing::IsEmpty()) << control->accessibleName;
        }
    };
    show(fake::screenStates().front(), unchanged, look);
}

} // namespace
} // namespace macos_tests
