#include "app/DriverManagerApp.h"

#include "platform/ui/Scene.h"
#include "tests/support/FakeServices.h"
#include "tests/support/FakeWindow.h"

namespace app {
namespace {

using platform::fake::FakeWindow;
using platform::fake::RunningApplication;
using platform::fake::SystemExtensions;
using Kind = platform::OSSystemExtensionRequest::Kind;

constexpr const char* base = "com.kelvra.driverkit.base";
constexpr const char* camera = "com.kelvra.ip-camera.cmio";
constexpr const char* network = "com.kelvra.driverkit.usb-to-poe";

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

TEST_F(TheApplication, CanEndWithItsModelBeforeAllAnswersArrive) {
    run([](RunningApplication&) {});
    SystemExtensions::shared().foundProperties(1, {platform::fake::enabledCopy(camera, "2.1", "2105")});
    platform::fake::drainMainQueue();
    EXPECT_TRUE(platform::fake::printedLines().empty());
}

/// An activation, from the press to the enabled state.
class TheRoad : public TheApplication {
protected:
    static void answerQueries(std::vector<platform::OSSystemExtensionProperties> ofCamera) {
        auto& service = SystemExtensions::shared();
        // The base is not one of the two drivers that the camera needs.
        service.foundProperties(service.latest(Kind::properties, base), {platform::fake::enabledCopy(base, "1", "1")});
        service.foundProperties(service.latest(Kind::properties, camera), std::move(ofCamera));
        service.foundProperties(service.latest(Kind::properties, network), {});
        platform::fake::drainMainQueue();
    }
};

TEST_F(TheRoad, ShowsThePendingApprovalAndThenTheEnabledCamera) {
    run([](RunningApplication& application) {
        FakeWindow& window = application.window;
        auto& service = SystemExtensions::shared();
        answerQueries({});

        window.press("Activate Camera Driver");
        const auto activation = service.latest(Kind::activation, camera);
        service.needsApproval(activation);
        platform::fake::drainMainQueue();
        answerQueries({platform::fake::awaitingCopy(camera, "2.1", "2105")});
        window.endTurn();
        EXPECT_EQ(window.texts(),
                  (std::vector<std::string>{"Open Privacy & Security in System Settings to allow the extensions.",
                                            "Camera Driver", "Await approval", "Network Driver", "Not installed"}));

        service.finish(activation);
        platform::fake::drainMainQueue();
        answerQueries({platform::fake::enabledCopy(camera, "2.1", "2105")});
        window.endTurn();
        EXPECT_EQ(window.texts(),
                  (std::vector<std::string>{"Both drivers need to be activated to run the camera", "Camera Driver",
                                            "Enabled", "Network Driver", "Not installed"}));
        EXPECT_EQ(window.controls(), (std::vector<std::string>{"Camera Driver actions", "Activate Network Driver",
                                                               "Network Driver actions"}));
    });
}

} // namespace
} // namespace app
