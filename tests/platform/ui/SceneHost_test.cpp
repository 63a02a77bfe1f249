#include "platform/ui/SceneHost.h"

#include "platform/Published.h"
#include "platform/ui/Elements.h"
#include "platform/ui/Metrics.h"
#include "tests/support/FakeWindow.h"

#include <memory>
#include <optional>

namespace platform::ui {
namespace {

/// An observable object without a model.
class Source : public ObservableObject {
public:
    void change(std::string value) { text = std::move(value); }

    Published<std::string> text{*this, "first"};
};

class AHost : public testing::Test {
protected:
    View content() {
        ++contents_;
        return observing(source_,
                         [this] {
                             ++bodies_;
                             return Text::verbatim(source_->text.get());
                         })
            .frame({.width = 100, .height = 50});
    }

    const std::shared_ptr<Source> source_ = std::make_shared<Source>();
    int contents_ = 0;
    int bodies_ = 0;
    std::optional<fake::FakeWindow> window_{std::in_place, WindowGroup{[this] { return content(); }}};
};

TEST_F(AHost, HasASceneOfTheSizeOfItsContent) {
    EXPECT_EQ(window_->scene().size, (Size{100, 50}));
}

TEST_F(AHost, DoesNotRebuildBeforeTheTurnEnds) {
    source_->change("second");
    EXPECT_EQ(bodies_, 1);
    EXPECT_EQ(window_->texts(), std::vector<std::string>{"first"});
}

TEST_F(AHost, RebuildsOnceForSeveralChangesWithTheNewValues) {
    for (const char* text : {"second", "third", "fourth"})
        source_->change(text);
    window_->endTurn();
    EXPECT_EQ(window_->rebuilds(), 1);
    EXPECT_EQ(bodies_, 2);
    EXPECT_EQ(contents_, 1);
    EXPECT_EQ(window_->texts(), std::vector<std::string>{"fourth"});
}

TEST_F(AHost, RebuildsAgainInALaterTurn) {
    source_->change("second");
    window_->endTurn();
    source_->change("third");
    window_->endTurn();
    EXPECT_EQ(window_->texts(), std::vector<std::string>{"third"});
}

TEST_F(AHost, RebuildsEvenIfTheValueIsTheSame) {
    source_->change("first");
    window_->endTurn();
    EXPECT_EQ(window_->rebuilds(), 1);
}

TEST(AHostOfAView, ObservesAsLongAsItLives) {
    const auto token = std::make_shared<int>();
    const auto ofOneView = token.use_count();
    const Subscribe subscribe = [token = std::weak_ptr{token}](const auto&) { return token.lock(); };
    const View view = observing(subscribe, [] { return Text::verbatim("text"); });
    {
        const fake::FakeWindow window{WindowGroup{[&] { return view; }}};
        EXPECT_EQ(token.use_count(), ofOneView + 1);
    }
    EXPECT_EQ(token.use_count(), ofOneView);
}

TEST(AViewThatObserves, IsRebuiltBehindAnother) {
    const auto source = std::make_shared<Source>();
    fake::FakeWindow window{WindowGroup{[&] {
        const View behind = observing(source, [&] { return Text::verbatim(source->text.get()); });
        return Spacer{}.background(behind);
    }}};
    source->change("second");
    window.endTurn();
    EXPECT_EQ(window.texts(), std::vector<std::string>{"second"});
}

TEST(AViewThatObserves, IsRebuiltInsideAnother) {
    const auto outer = std::make_shared<Source>();
    const auto inner = std::make_shared<Source>();
    fake::FakeWindow window{WindowGroup{[&] {
        return observing(outer, [&] { return observing(inner, [&] { return Text::verbatim(inner->text.get()); }); });
    }}};
    inner->change("second");
    window.endTurn();
    EXPECT_EQ(window.texts(), std::vector<std::string>{"second"});
}

TEST(AScheduledRebuild, DoesNothingAfterItsHostIsGone) {
    const auto source = std::make_shared<Source>();
    std::vector<std::function<void()>> scheduled;
    int shown = 0;
    const fake::FixedMetrics metrics;
    auto host = std::make_unique<SceneHost>(
        WindowGroup{[&] { return observing(source, [&] { return Text::verbatim(source->text.get()); }); }}, metrics,
        EdgeInsets{}, [&](std::function<void()> work) { scheduled.push_back(std::move(work)); },
        [&](const Scene&) { ++shown; });
    source->change("second");
    host.reset();
    for (const auto& work : scheduled)
        work();
    EXPECT_EQ(shown, 0);
}

TEST(ARebuild, ReplacesTheHandlersEvenIfNothingVisibleChanged) {
    const auto source = std::make_shared<Source>();
    std::string pressed;
    fake::FakeWindow window{WindowGroup{[&] {
        return observing(source, [&] {
            return Button{"Go", [&pressed, text = source->text.get()] { pressed = text; }};
        });
    }}};
    const Scene before = window.scene();
    source->change("second");
    window.endTurn();
    window.press("Go");
    EXPECT_EQ(window.scene(), before);
    EXPECT_EQ(pressed, "second");
}

TEST(TextSizes, AreCachedByTextStyleAndWeight) {
    const fake::FixedMetrics metrics;
    const RememberedMetrics remembered{metrics};
    const Font semibold{TextStyle::body, FontWeight::semibold};
    for (const Font font : {Font::body, Font::title3, semibold, Font::body, Font::title3, semibold})
        EXPECT_EQ(remembered.textSize("text", font), metrics.textSize("text", font));
    EXPECT_EQ(metrics.textMeasurements, 3 + 6) << "six of them for the comparison alone";
}

TEST(TextSizes, AreDroppedWhenThereAre256) {
    const fake::FixedMetrics metrics;
    const RememberedMetrics remembered{metrics};
    for (int i = 0; i < 256; ++i)
        remembered.textSize(std::to_string(i), Font::body);
    remembered.textSize("0", Font::body);
    EXPECT_EQ(metrics.textMeasurements, 256);
    remembered.textSize("256", Font::body);
    remembered.textSize("0", Font::body);
    EXPECT_EQ(metrics.textMeasurements, 258);
}

TEST(SizesOfImages, AreMeasuredByTheWindow) {
    fake::FixedMetrics metrics;
    metrics.images["Ethernet"] = {24, 16};
    EXPECT_EQ(RememberedMetrics{metrics}.imageSize({"Ethernet"}), (Size{24, 16}));
}

} // namespace
} // namespace platform::ui
