#include "app/DriverManagerApp.h"

#include "platform/ui/Scene.h"
#include "tests/support/FakeServices.h"
#include "tests/support/FakeWindow.h"

#include <gmock/gmock.h>

namespace app {
namespace {

using platform::fake::RunningApplication;
using platform::fake::SystemExtensions;

constexpr const char* camera = "com.kelvra.ip-camera.cmio";

class TheApplication : public testing::Test {
protected:
    /// Runs the application and, while it runs, `body`.
    static int run(std::function<void(RunningApplication&)> body) {
        platform::fake::whenApplicationRuns(std::move(body));
        return DriverManagerApp{}.main(0, nullptr);
    }

    platform::fake::FreshServices services_;
};

TEST_F(TheApplication, ShowsALightScreenInAWindowOfItsNameAndQuitsWithItAndTheStatusOfThePlatform) {
    const int status = run([](RunningApplication& application) {
        EXPECT_EQ(application.window.scene().preferredColorScheme, platform::ui::ColorScheme::light);
        EXPECT_EQ(application.title, "Driver Manager");
        EXPECT_TRUE(application.terminatesAfterLastWindowClosed);
    });
    EXPECT_EQ(status, 0);
}

TEST_F(TheApplication, MakesANewModelAndQueriesAgainEachTimeItsContentIsBuilt) {
    const auto scene = DriverManagerApp{}.body();
    const auto first = scene.content();
    const auto second = scene.content();
    EXPECT_EQ(SystemExtensions::shared().submissions().size(), 6u);
}

TEST_F(TheApplication, DoesNotAskForItsContentWhenTheModelChanges) {
    run([](RunningApplication& application) {
        auto& service = SystemExtensions::shared();
        service.foundProperties(1, {platform::fake::enabledCopy(camera, "2.1", "2105")});
        platform::fake::drainMainQueue();
        application.window.endTurn();
        EXPECT_EQ(application.window.rebuilds(), 1);
        EXPECT_EQ(service.submissions().size(), 3u);
    });
}

TEST_F(TheApplication, DoesNotCountTheBaseDriverAmongTheTwoThatAreNeeded) {
    run([](RunningApplication& application) {
        auto& service = SystemExtensions::shared();
        service.foundProperties(0, {platform::fake::enabledCopy("com.kelvra.driverkit.base", "2.1", "2105")});
        service.foundProperties(1, {platform::fake::enabledCopy(camera, "2.1", "2105")});
        platform::fake::drainMainQueue();
        application.window.endTurn();
        EXPECT_THAT(application.window.texts(),
                    testing::Contains("Both drivers need to be activated to run the camera"));
    });
}

TEST_F(TheApplication, CanEndWithItsModelBeforeAllAnswersArrive) {
    run([](RunningApplication&) {});
    SystemExtensions::shared().foundProperties(1, {platform::fake::enabledCopy(camera, "2.1", "2105")});
    platform::fake::drainMainQueue();
    EXPECT_TRUE(platform::fake::printedLines().empty());
}

} // namespace
} // namespace app
