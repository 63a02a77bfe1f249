#include "tests/platform/macos/window/WindowTest.h"

namespace macos_tests {
namespace {

class TheRoadOfAnActivation : public WindowTest {};

TEST_F(TheRoadOfAnActivation, BeginsWithNothingInstalled) {
    run([](Desk& desk) {
        EXPECT_THAT(desk.texts(),
                    testing::ElementsAre("Both drivers need to be activated to run the camera", "Camera Driver",
                                         "Not installed", "Network Driver", "Not installed"));
    });
}

TEST_F(TheRoadOfAnActivation, LeadsFromThePressOfTheButtonToAllSet) {
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

} // namespace
} // namespace macos_tests
