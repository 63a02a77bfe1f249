#include "tests/platform/macos/window/WindowTest.h"

namespace macos_tests {
namespace {

class APress : public WindowTest {
protected:
    /// Whether the application goes on, and the camera was not asked to be activated.
    testing::AssertionResult wasNone(Desk& desk) const {
        desk.click("Activate Network Driver");
        const auto goesOn = isSubmitted(desk, "activation " + network);
        if (!goesOn || submitted("activation " + camera) == 0) return goesOn;
        return testing::AssertionFailure() << "it was a press";
    }
};

TEST_F(APress, CountsWhenItIsReleased) {
    run([this](Desk& desk) {
        long before = -1;
        desk.press("Activate Camera Driver", {atOnce([&] {
                       before = submitted("activation " + camera);
                       desk.releaseButton();
                   })});
        EXPECT_TRUE(isSubmitted(desk, "activation " + camera));
        EXPECT_EQ(before, 0);
    });
}

TEST_F(APress, DoesNotCountWhenItIsReleasedOutside) {
    run([this](Desk& desk) {
        desk.press("Activate Camera Driver", {atOnce([&] {
                       desk.pointAt({20, 215});
                       desk.releaseButton();
                   })});
        ASSERT_TRUE(isDone(desk));
        EXPECT_TRUE(wasNone(desk));
    });
}

TEST_F(APress, IsCancelledWhenItsButtonGoes) {
    run([this](Desk& desk) {
        desk.press("Activate Camera Driver",
                   {atOnce([&] { found(enabled(camera)); }),
                    {"a card without its button", [&] { return !desk.has("Activate Camera Driver"); },
                     [&] { desk.releaseButton(); }}});
        ASSERT_TRUE(isDone(desk));
        EXPECT_TRUE(wasNone(desk));
    });
}

} // namespace
} // namespace macos_tests
