#include "platform/ui/Elements.h"
#include "tests/platform/macos/window/WindowTest.h"

namespace macos_tests {
namespace {

namespace ui = platform::ui;

testing::AssertionResult tabTo(Desk& desk, const std::string& label) {
    for (int taps = 0; taps < 10 && desk.focused() != label; ++taps) {
        const std::string before = desk.focused();
        desk.tapKey("Tab");
        if (!desk.until([&] { return desk.focused() != before; })) break;
    }
    return comesToFocus(desk, label);
}

class Focus : public WindowTest {};

TEST_F(Focus, GoesInReadingOrderAndBeginsAnew) {
    run([](Desk& desk) {
        for (const char* label : {"Activate Camera Driver", "Camera Driver actions", "Activate Network Driver",
                                  "Network Driver actions", "Activate Camera Driver"}) {
            desk.tapKey("Tab");
            ASSERT_TRUE(comesToFocus(desk, label));
        }
    });
}

TEST_F(Focus, GoesBackWithShift) {
    run([](Desk& desk) {
        for (const char* label : {"Network Driver actions", "Activate Network Driver"}) {
            desk.tapKey("Tab", {"Shift_L"});
            ASSERT_TRUE(comesToFocus(desk, label));
        }
    });
}

TEST_F(Focus, LetsSpacePress) {
    run([this](Desk& desk) {
        ASSERT_TRUE(tabTo(desk, "Activate Network Driver"));
        desk.tapKey("space");
        EXPECT_TRUE(isSubmitted(desk, "activation " + network));
    });
}

TEST_F(Focus, GoesOnInTheSameCardWhenItsControlIsGone) {
    run([this](Desk& desk) {
        ASSERT_TRUE(tabTo(desk, "Activate Camera Driver"));
        found(enabled(camera));
        ASSERT_TRUE(comesToShow(desk, "Enabled"));
        EXPECT_EQ(desk.focused(), "Camera Driver actions");
    });
}

TEST_F(Focus, IsNotTakenByAClickOnTheGround) {
    run([](Desk& desk) {
        ASSERT_TRUE(tabTo(desk, "Activate Camera Driver"));
        ASSERT_TRUE(desk.clickBeside({20, 215}));
        EXPECT_EQ(desk.focused(), "Activate Camera Driver");
    });
}

TEST_F(Focus, GoesOnWhileAnotherControlIsPressed) {
    run([this](Desk& desk) {
        ASSERT_TRUE(tabTo(desk, "Activate Camera Driver"));
        desk.press("Activate Network Driver", {atOnce([&] { found(enabled(camera)); }),
                                               {"a card that says Enabled", [&] { return desk.shows("Enabled"); },
                                                [&] { desk.releaseButton(); }}});
        ASSERT_TRUE(isSubmitted(desk, "activation " + network));
        EXPECT_EQ(desk.focused(), "Camera Driver actions");
    });
}

TEST_F(Focus, MayBeOfferedOnceAPressIsOver) {
    run([](Desk& desk) {
        bool isAcceptedMeanwhile = true;
        desk.press("Activate Camera Driver", {atOnce([&] {
                       isAcceptedMeanwhile = desk.acceptsFocus("Activate Network Driver");
                       desk.releaseButton();
                   })});
        ASSERT_TRUE(isDone(desk));
        EXPECT_FALSE(isAcceptedMeanwhile);
        ASSERT_TRUE(desk.pressBeside({20, 215}));
        EXPECT_TRUE(desk.acceptsFocus("Activate Network Driver"));
        desk.releaseButton();
    });
}

TEST_F(Focus, GoesInAnOrderThatTheWindowLeavesAlone) {
    run([](Desk& desk) { EXPECT_TRUE(desk.keepsItsOrderOfKeys()); });
}

class FocusOnAScreen : public ScreenTest {};

TEST_F(FocusOnAScreen, CanBeHadAgainAfterAllControlsWereGone) {
    const auto screen = [this](const int number) {
        return rows({number == 1 ? ui::View{ui::EmptyView{}} : button("Button")});
    };
    run(screen, [this](Desk& desk) {
        ASSERT_TRUE(tabTo(desk, "Button"));
        change(1);
        ASSERT_TRUE(comesToFocus(desk, ""));
        change(2);
        ASSERT_TRUE(desk.until([&] { return desk.has("Button"); }));
        EXPECT_TRUE(tabTo(desk, "Button"));
    });
}

TEST_F(FocusOnAScreen, ReachesAControlThatCameLaterInItsPlace) {
    const auto screen = [this](const int number) {
        return rows({button("First"), number == 0 ? ui::View{ui::EmptyView{}} : button("Second"), button("Third")});
    };
    run(screen, [this](Desk& desk) {
        ASSERT_TRUE(tabTo(desk, "Third"));
        change(1);
        ASSERT_TRUE(desk.until([&] { return desk.has("Second"); }));
        desk.tapKey("Tab", {"Shift_L"});
        EXPECT_TRUE(comesToFocus(desk, "Second"));
    });
}

} // namespace
} // namespace macos_tests
