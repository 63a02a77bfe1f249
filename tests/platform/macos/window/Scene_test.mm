#include "app/DriverManagerApp.h"
#include "platform/macos/ImageStore.h"
#include "platform/macos/MainWindow.h"
#include "platform/ui/Interaction.h"
#include "platform/ui/Painting.h"
#include "platform/ui/SceneHost.h"
#include "tests/macos/gnustep/StandIns.h"
#include "tests/platform/macos/window/WindowTest.h"
#include "tests/support/FixedMetrics.h"

#import <AppKit/AppKit.h>

#include <algorithm>

namespace macos_tests {
namespace {

namespace ui = platform::ui;

constexpr Rgb white{255, 255, 255};
constexpr Rgb black{0, 0, 0};
constexpr Rgb orange{0xEB, 0x6E, 0x3D};
constexpr Rgb windowGround{236, 236, 236};
constexpr Rgb border{219, 219, 219};

class TheScene : public WindowTest {
protected:
    static ui::Rect rectOf(Desk& desk, const std::string& label) {
        for (const Element& element : desk.elements())
            if (element.label == label) return element.rect;
        return {};
    }
};

TEST_F(TheScene, HasWhatDependsOnNoTextWhereTheDesignHasIt) {
    run([](Desk& desk) {
        EXPECT_EQ(rectOf(desk, "Camera Driver, not enabled"), (ui::Rect{58, 90.25, 22, 22}));
        EXPECT_EQ(rectOf(desk, "Network Driver, not enabled"), (ui::Rect{58, 157.75, 22, 22}));
        EXPECT_EQ(desk.elements().front().rect, (ui::Rect{16, 10, 20, 20}));
        EXPECT_EQ(rectOf(desk, "Activate Camera Driver").maxX(), 383);
        EXPECT_EQ(rectOf(desk, "Camera Driver actions").x, 383);
        EXPECT_EQ(rectOf(desk, "Camera Driver actions").maxX(), 401 + 8);
    });
}

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

TEST_F(TheScene, IsPaintedInItsColoursAndRunsOnUnderTheTitleBar) {
    run([this](Desk& desk) {
        found(waiting(camera));
        found(enabled(network));
        ASSERT_TRUE(comesToShow(desk, "Await approval"));
        constexpr int titleBar = 28;
        const Picture picture = desk.picture(titleBar);
        const auto at = [&](const int x, const int y) { return picture.at(x, titleBar + y); };
        EXPECT_EQ(at(440, -titleBar), orange);
        EXPECT_EQ(at(440, 39), orange);
        EXPECT_EQ(at(440, 40), windowGround);
        EXPECT_EQ(at(449, 229), windowGround);
        EXPECT_EQ(at(26, 100), border);
        EXPECT_EQ(at(30, 100), white);
        EXPECT_EQ(at(69, 87), white) << "in the ring";
        EXPECT_EQ(at(69, 83), black) << "the ring";
        EXPECT_EQ(at(69, 154), black) << "in the disc";
        EXPECT_EQ(at(300, 101), black) << "the button";
    });
}

/// What assistive technology would be told of each node, in reading order.
std::vector<ui::Rect> rectsOf(const ui::Scene& scene) {
    std::vector<ui::Rect> rects;
    const ui::Cases rect{[&](const ui::Control* control) { return ui::hitArea(scene, *control); },
                         [](const auto* seen) { return seen->rect; }};
    for (const ui::Readable& readable : ui::readingOrder(scene))
        rects.push_back(std::visit(rect, readable));
    return rects;
}

ui::Scene sceneIn(const ui::EdgeInsets& safeArea) {
    const platform::fake::FixedMetrics metrics;
    return ui::layout(app::DriverManagerApp{}.body().content(), std::nullopt, metrics, safeArea);
}

/// The application's first scene as fixed metrics lay it out, in the native window.
int showWithFixedMetrics() {
    @autoreleasepool {
        const platform::ImageStore images{""};
        platform::MainWindow window{"Driver Manager", images};
        window.present(sceneIn(window.safeArea()));
        window.show();
        [NSApp run];
    }
    return 0;
}

TEST_F(TheScene, IsThatOfEveryOtherWindowWhereTextsAreMeasuredAlike) {
    std::vector<ui::Rect> seen;
    const auto look = [&](Desk& desk) {
        for (const Element& element : desk.elements())
            seen.push_back(element.rect);
    };
    Desk::run(look, showWithFixedMetrics);
    EXPECT_EQ(seen, rectsOf(sceneIn({})));
}

TEST_F(TheScene, RingsWhatIsSeenOfAControlInThePointsOfItsView) {
    const ui::Scene scene = sceneIn({});
    const auto look = [&](Desk& desk) {
        for (const ui::Control* control : ui::controlsOf(scene)) {
            const ui::Rect frame = rectOf(desk, control->accessibleName);
            ui::Rect expected = ui::lookOf(*control).rect;
            expected.x -= frame.x;
            expected.y -= frame.y;
            EXPECT_EQ(desk.focusRingOf(control->accessibleName), expected) << control->accessibleName;
        }
    };
    Desk::run(look, showWithFixedMetrics);
}

} // namespace
} // namespace macos_tests
