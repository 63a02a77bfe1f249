#include "app/DriverManagerApp.h"

#include "platform/linux/ScenePainter.h"
#include "platform/ui/Interaction.h"
#include "platform/ui/SceneHost.h"
#include "tests/platform/linux/window/WindowTest.h"

#include <algorithm>
#include <tuple>

namespace platform {
namespace {

/// The screen as this window measures it, before any answer has come.
class TheScreen : public testing::Test {
protected:
    /// The primitives of one kind, those inside clips and controls too, in painting order.
    template <typename Primitive>
    std::vector<Primitive> all() const {
        std::vector<Primitive> found;
        collect(scene_.nodes, found);
        return found;
    }
    static void expectNear(const ui::Rect& actual, const ui::Rect& expected) {
        EXPECT_NEAR(actual.x, expected.x, 0.5);
        EXPECT_NEAR(actual.y, expected.y, 0.5);
        EXPECT_NEAR(actual.width, expected.width, 0.5);
        EXPECT_NEAR(actual.height, expected.height, 0.5);
    }

    fake::FreshServices services_;
    TestApplication application_;
    ImageStore images_{QStringLiteral(ICONS)};
    QtMetrics metrics_{images_};
    ui::Scene scene_ = ui::layout(app::DriverManagerApp{}.body().content(), std::nullopt, metrics_);

private:
    template <typename Primitive>
    static void collect(const std::vector<ui::SceneNode>& nodes, std::vector<Primitive>& found) {
        for (const ui::SceneNode& node : nodes) {
            if (const auto* match = std::get_if<Primitive>(&node.value)) found.push_back(*match);
            if (const auto* clip = std::get_if<ui::Clip>(&node.value)) collect(clip->content, found);
            if (const auto* control = std::get_if<ui::Control>(&node.value)) collect(control->content, found);
        }
    }
};

TEST_F(TheScreen, HasItsFixedSize) {
    EXPECT_EQ(scene_.size, (ui::Size{450, 230}));
}

TEST_F(TheScreen, HasItsBannerAtTheTop) {
    expectNear(all<ui::Fill>().front().rect, {0, 0, 450, 40});
    expectNear(all<ui::ImageRun>().front().rect, {16, 10, 20, 20});
    const ui::TextRun sentence = all<ui::TextRun>().front();
    EXPECT_NEAR(sentence.rect.x, 44, 0.5);
    EXPECT_NEAR(sentence.rect.y + sentence.rect.height / 2, 20, 0.5);
}

TEST_F(TheScreen, HasItsBlockWithTheBorderInside) {
    const ui::Stroke border = all<ui::Stroke>().back();
    EXPECT_EQ(border.shape, ui::ShapeKind::rectangle);
    EXPECT_EQ(border.lineWidth, 2);
    expectNear(border.rect, {26, 69, 398, 132});
}

TEST_F(TheScreen, HasItsCardsAndTheDividerBetweenThem) {
    const auto fills = all<ui::Fill>();
    const auto has = [&](const ui::Rect& rect) {
        return std::any_of(fills.begin(), fills.end(), [&](const ui::Fill& fill) {
            return std::abs(fill.rect.x - rect.x) <= 0.5 && std::abs(fill.rect.y - rect.y) <= 0.5 &&
                   std::abs(fill.rect.width - rect.width) <= 0.5 && std::abs(fill.rect.height - rect.height) <= 0.5;
        });
    };
    EXPECT_TRUE(has({25, 68, 400, 134}));
    EXPECT_TRUE(has({25, 76, 400, 50.5}));
    EXPECT_TRUE(has({25, 143.5, 400, 50.5}));
    EXPECT_TRUE(has({25, 134.5, 400, 1}));
}

TEST_F(TheScreen, HasTheRingsOfItsIconsInTheMiddleOfTheirCards) {
    const auto rings = all<ui::Stroke>();
    EXPECT_EQ(rings[0].shape, ui::ShapeKind::circle);
    expectNear(rings[0].rect, {51, 83.25, 36, 36});
    expectNear(rings[1].rect, {51, 150.75, 36, 36});
}

TEST_F(TheScreen, HasTheTextsOfEachCardOneBelowTheOtherAroundItsMiddle) {
    const auto texts = all<ui::TextRun>();
    for (const auto& [name, state, middle] : {std::tuple{1, 2, 101.25}, std::tuple{4, 5, 168.75}}) {
        const ui::Rect above = texts.at(static_cast<std::size_t>(name)).rect;
        const ui::Rect below = texts.at(static_cast<std::size_t>(state)).rect;
        EXPECT_NEAR(above.x, 105, 0.5);
        EXPECT_NEAR(below.x, 105, 0.5);
        EXPECT_NEAR(below.y - above.maxY(), 2, 0.5);
        EXPECT_NEAR((above.y + below.maxY()) / 2, middle, 0.5);
    }
}

TEST_F(TheScreen, HasItsControlsAtTheTrailingEdgeInTheMiddleOfTheirCards) {
    for (const ui::Control* control : ui::controlsOf(scene_)) {
        const double middle = control->accessibleName.find("Camera") == std::string::npos ? 168.75 : 101.25;
        EXPECT_NEAR(control->rect.y + control->rect.height / 2, middle, 0.5);
        if (std::holds_alternative<ui::PullDownMenu>(control->kind)) {
            EXPECT_NEAR(control->rect.x, 391, 0.5);
            EXPECT_NEAR(control->rect.maxX(), 401, 0.5);
            continue;
        }
        EXPECT_NEAR(control->rect.maxX(), 383, 0.5);
        const std::string title = control->accessibleName.substr(0, control->accessibleName.find(' '));
        EXPECT_NEAR(control->rect.width, metrics_.textSize(title, ui::Font::body).width + 36, 0.5);
    }
}

TEST_F(TheScreen, TruncatesNothing) {
    for (const ui::TextRun& run : all<ui::TextRun>())
        EXPECT_FALSE(run.truncated) << run.text;
}

} // namespace
} // namespace platform
