#include "tests/macos/gnustep/StandIns.h"
#include "tests/platform/macos/window/WindowTest.h"

#import <Foundation/Foundation.h>

namespace macos_tests {
namespace {

class TheApplication : public WindowTest {
protected:
    /// Three requests and their answers, by which a button of each card comes or goes.
    testing::AssertionResult askAndAnswer(Desk& desk, const bool isCamera) {
        @autoreleasepool {
            const auto before = service_.submissions().size();
            service_.needsApproval(service_.latest("activation " + camera));
            const bool isAsked = desk.until([&] { return service_.submissions().size() == before + 3; });
            if (!isAsked) return testing::AssertionFailure() << "nobody asks";
            service_.found(service_.latest("properties com.kelvra.driverkit.base"), standin::makeArray({}));
            found(isCamera ? enabled(camera) : waiting(camera));
            found(isCamera ? waiting(network) : enabled(network));
            return comesToHave(desk, isCamera ? "Activate Network Driver" : "Activate Camera Driver");
        }
    }
};

TEST_F(TheApplication, LeadsFromAPressOfAButtonToAllSet) {
    run([this](Desk& desk) {
        desk.click("Activate Camera Driver");
        ASSERT_TRUE(isSubmitted(desk, "activation " + camera));

        const long asked = submitted("properties " + camera);
        service_.needsApproval(service_.latest("activation " + camera));
        ASSERT_TRUE(isSubmitted(desk, "properties " + camera, asked + 1));
        found(waiting(camera));
        ASSERT_TRUE(comesToShow(desk, "Await approval"));
        EXPECT_TRUE(desk.shows("Open Privacy & Security in System Settings to allow the extensions."));

        service_.finish(service_.latest("activation " + camera), 0);
        ASSERT_TRUE(isSubmitted(desk, "properties " + camera, asked + 2));
        found(enabled(camera));
        found(enabled(network));
        ASSERT_TRUE(comesToShow(desk, "Woohoo, you are all set!"));
        EXPECT_FALSE(desk.shows("Await approval"));
        EXPECT_TRUE(desk.has("Camera Driver, enabled"));
        EXPECT_FALSE(desk.has("Activate Camera Driver"));
    });
}

TEST_F(TheApplication, LeavesNoObjectBehindAfterAHundredRequestsAndRebuilds) {
    run([this](Desk& desk) {
        desk.click("Activate Camera Driver");
        ASSERT_TRUE(isSubmitted(desk, "activation " + camera));
        for (int i = 0; i < 10; ++i)
            ASSERT_TRUE(askAndAnswer(desk, i % 2 == 0));
        const auto before = standin::liveObjects();
        for (int i = 0; i < 100; ++i)
            ASSERT_TRUE(askAndAnswer(desk, i % 2 == 0));
        EXPECT_EQ(standin::liveObjects(), before);
    });
}

} // namespace
} // namespace macos_tests
