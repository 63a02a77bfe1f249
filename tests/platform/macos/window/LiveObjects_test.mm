#include "tests/macos/gnustep/StandIns.h"
#include "tests/platform/macos/window/WindowTest.h"

#import <Foundation/Foundation.h>

namespace macos_tests {
namespace {

class LiveObjects : public WindowTest {
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

TEST_F(LiveObjects, AreNoMoreAfterAHundredRequestsAndRebuilds) {
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
