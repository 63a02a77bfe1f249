#include "platform/ui/SceneHost.h"

#include "platform/ui/Button.h"
#include "platform/ui/Observing.h"
#include "platform/ui/RememberedMetrics.h"
#include "platform/ui/Text.h"
#include "platform/ui/VStack.h"
#include "tests/support/FakeWindow.h"

#include <memory>
#include <optional>

namespace platform::ui {
namespace {

/// Something to observe, without a model.
class Source {
public:
    class Token {
    public:
        Token(Source& source, std::function<void()> changed) : source_{&source} {
            source.changed_ = std::move(changed);
        }
        Token(Token&& other) noexcept : source_{std::exchange(other.source_, nullptr)} {}
        ~Token() {
            if (source_ != nullptr) source_->changed_ = nullptr;
        }

    private:
        Source* source_;
    };

    struct Publisher {
        Source& source;
        Token subscribe(std::function<void()> changed) const { return {source, std::move(changed)}; }
    };

    Publisher objectWillChange() { return {*this}; }
    bool observed() const { return changed_ != nullptr; }

    void change(std::string value) {
        if (changed_) changed_();
        text = std::move(value);
    }

    std::string text = "first";

private:
    std::function<void()> changed_;
};

class AHost : public testing::Test {
protected:
    View content() {
        ++contents_;
        return observing(source_,
                         [this] {
                             ++bodies_;
                             return View{Text::verbatim(source_->text)};
                         })
            .frame({.width = 100, .height = 50});
    }

    const std::shared_ptr<Source> source_ = std::make_shared<Source>();
    int contents_ = 0;
    int bodies_ = 0;
    std::optional<fake::FakeWindow> window_{std::in_place, WindowGroup{[this] { return content(); }}};
};

TEST_F(AHost, AsksForTheContentOnce) {
    source_->change("second");
    window_->endTurn();
    EXPECT_EQ(contents_, 1);
}

TEST_F(AHost, EvaluatesTheBodyOnceForTheFirstScene) {
    EXPECT_EQ(bodies_, 1);
}

TEST_F(AHost, HasASceneOfTheContentsOwnSize) {
    EXPECT_EQ(window_->scene().size, (Size{100, 50}));
}

TEST_F(AHost, DoesNothingUntilTheTurnEnds) {
    source_->change("second");
    EXPECT_EQ(bodies_, 1);
    EXPECT_EQ(window_->texts(), std::vector<std::string>{"first"});
}

TEST_F(AHost, RebuildsOnceForAnyNumberOfChangesAndSeesTheNewValues) {
    for (const char* text : {"second", "third", "fourth"})
        source_->change(text);
    window_->endTurn();
    EXPECT_EQ(window_->rebuilds(), 1);
    EXPECT_EQ(bodies_, 2);
    EXPECT_EQ(window_->texts(), std::vector<std::string>{"fourth"});
}

TEST_F(AHost, RebuildsAgainInALaterTurn) {
    source_->change("second");
    window_->endTurn();
    source_->change("third");
    window_->endTurn();
    EXPECT_EQ(window_->texts(), std::vector<std::string>{"third"});
}

TEST_F(AHost, RebuildsAlsoWhereTheValueIsTheSame) {
    source_->change("first");
    window_->endTurn();
    EXPECT_EQ(window_->rebuilds(), 1);
}

TEST_F(AHost, ObservesNoLongerThanItLives) {
    ASSERT_TRUE(source_->observed());
    window_.reset();
    EXPECT_FALSE(source_->observed());
}

TEST(ARebuildThatIsScheduled, DoesNothingOnceItsHostIsGone) {
    const auto source = std::make_shared<Source>();
    std::vector<std::function<void()>> scheduled;
    int shown = 0;
    const fake::FixedMetrics metrics;
    auto host = std::make_unique<SceneHost>(
        WindowGroup{[&] { return observing(source, [&] { return View{Text::verbatim(source->text)}; }); }}, metrics,
        EdgeInsets{}, [&](std::function<void()> work) { scheduled.push_back(std::move(work)); },
        [&](const Scene&) { ++shown; });
    source->change("second");
    host.reset();
    for (const auto& work : scheduled)
        work();
    EXPECT_EQ(shown, 0);
}

TEST(ARebuild, ReplacesTheHandlersAlsoWhereNothingVisibleChanged) {
    const auto source = std::make_shared<Source>();
    std::string pressed;
    fake::FakeWindow window{WindowGroup{[&] {
        return observing(source, [&] {
            return View{Button{"Go", [&pressed, text = source->text] { pressed = text; }}};
        });
    }}};
    const Scene before = window.scene();
    source->change("second");
    window.endTurn();
    window.press("Go");
    EXPECT_EQ(window.scene(), before);
    EXPECT_EQ(pressed, "second");
}

TEST(TextSizes, AreRememberedAcrossLayouts) {
    const fake::FixedMetrics metrics;
    const RememberedMetrics remembered{metrics};
    const Size size = remembered.textSize("text", Font::body);
    EXPECT_EQ(remembered.textSize("text", Font::body), size);
    EXPECT_EQ(metrics.textMeasurements, 1);
}

TEST(TextSizes, AreToldApartByFont) {
    const fake::FixedMetrics metrics;
    const RememberedMetrics remembered{metrics};
    EXPECT_NE(remembered.textSize("text", Font::body), remembered.textSize("text", Font::title3));
}

TEST(TextSizes, AreForgottenBeforeTheyAreTooMany) {
    const fake::FixedMetrics metrics;
    const RememberedMetrics remembered{metrics};
    for (int i = 0; i < 1000; ++i)
        remembered.textSize(std::to_string(i), Font::body);
    remembered.textSize("0", Font::body);
    EXPECT_EQ(metrics.textMeasurements, 1001);
}

} // namespace
} // namespace platform::ui
