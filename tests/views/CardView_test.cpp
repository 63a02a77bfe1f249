#include "views/CardView.h"

#include "tests/support/FakeWindow.h"
#include "tests/support/SceneText.h"
#include "views/KelvraIcon.h"

#include <limits>
#include <vector>

namespace views {
namespace {

using model::SysExtInfo;
using platform::fake::FakeWindow;
using platform::ui::WindowGroup;

constexpr std::int64_t build = 2105;

SysExtInfo camera(const bool enabled, const std::int64_t intversion = 0) {
    SysExtInfo sei;
    sei.id = "com.kelvra.ip-camera.cmio";
    sei.state = enabled ? "Enabled" : "Not installed";
    sei.enabled = enabled;
    sei.iconName = "VideoCamera";
    sei.driverName = "Camera Driver";
    sei.intversion = intversion;
    return sei;
}

class ACard : public testing::Test {
protected:
    CardView card(const SysExtInfo& sei) {
        return {sei, [this](const std::string& id) { calls_.push_back("activate " + id); },
                [this](const std::string& id) { calls_.push_back("deactivate " + id); },
                [this] { calls_.emplace_back("enumerate"); }, build};
    }
    FakeWindow window(const SysExtInfo& sei) {
        const CardView view = card(sei);
        return FakeWindow{WindowGroup{[view] { return view; }}};
    }
    std::vector<std::string> controls(const SysExtInfo& sei) { return window(sei).controls(); }
    std::string scene(const SysExtInfo& sei, const double height = 50.5) {
        return platform::fake::sceneOf(card(sei), platform::ui::Size{400, height});
    }

    std::vector<std::string> calls_;
    const std::vector<std::string> withActivate_{"Activate Camera Driver", "Camera Driver actions"};
    const std::vector<std::string> withUpgrade_{"Upgrade Camera Driver", "Camera Driver actions"};
    const std::vector<std::string> withNeither_{"Camera Driver actions"};
};

TEST_F(ACard, OffersActivateForAnExtensionThatIsNotEnabled) {
    for (const std::int64_t intversion : {std::int64_t{0}, build - 1, build, build + 1})
        EXPECT_EQ(controls(camera(false, intversion)), withActivate_) << intversion;
}

TEST_F(ACard, OffersOnlyTheMenuIfTheInstalledBuildIsNotLower) {
    EXPECT_EQ(controls(camera(true, build)), withNeither_);
    EXPECT_EQ(controls(camera(true, build + 1)), withNeither_);
}

TEST_F(ACard, OffersUpgradeIfTheInstalledBuildIsLowerOrAPlaceholder) {
    for (const std::int64_t intversion :
         {build - 1, std::int64_t{0}, std::int64_t{-7}, std::numeric_limits<std::int64_t>::min()})
        EXPECT_EQ(controls(camera(true, intversion)), withUpgrade_) << intversion;
}

TEST_F(ACard, ActivatesOnceForEachPressOfItsButton) {
    window(camera(false)).press("Activate Camera Driver");
    window(camera(true)).press("Upgrade Camera Driver");
    EXPECT_EQ(calls_, std::vector<std::string>(2, "activate com.kelvra.ip-camera.cmio"));
}

TEST_F(ACard, EnumeratesOnceForRefreshAndDeactivatesOnceForRemove) {
    window(camera(true)).choose("Camera Driver actions", "Refresh");
    window(camera(false)).choose("Camera Driver actions", "Remove");
    EXPECT_EQ(calls_, (std::vector<std::string>{"enumerate", "deactivate com.kelvra.ip-camera.cmio"}));
}

TEST_F(ACard, ActsOnTheRecordThatItShows) {
    SysExtInfo sei = camera(false);
    auto shown = window(sei);
    sei.id = "another";
    shown.press("Activate Camera Driver");
    EXPECT_EQ(calls_, std::vector<std::string>{"activate com.kelvra.ip-camera.cmio"});
}

TEST_F(ACard, ChangesIconAndActionWithTheEnabledFlag) {
    EXPECT_EQ(scene(camera(false)), "fill rectangle 0,0 400x50.5 white\n"
                                    "stroke circle 26,7.25 36x36 black 2\n"
                                    "image 33,14.25 22x22 \"VideoCamera\" named \"Camera Driver, not enabled\"\n"
                                    "text 80,6.75 87.75x18.75 title3 semibold black \"Camera Driver\"\n"
                                    "text 80,27.5 76.05x16.25 body semibold gray \"Not installed\"\n"
                                    "button 275.2,10.125 82.8x30.25 \"Activate Camera Driver\"\n"
                                    "  clip capsule 275.2,10.125 82.8x30.25\n"
                                    "    fill rectangle 275.2,10.125 82.8x30.25 black\n"
                                    "    text 293.2,17.125 46.8x16.25 body white \"Activate\"\n"
                                    "menu 366,17.25 10x16 \"Camera Driver actions\"\n"
                                    "  item \"Refresh\" system \"arrow.clockwise.circle\"\n"
                                    "  item \"Remove\" system \"trash\"\n"
                                    "  indicator 366,17.25 10x16 black\n");
    EXPECT_EQ(scene(camera(true)), "fill rectangle 0,0 400x50.5 white\n"
                                   "clip circle 24,5.25 40x40\n"
                                   "  fill rectangle 24,5.25 40x40 black\n"
                                   "  image 33,14.25 22x22 \"VideoCameraDark\" named \"Camera Driver, enabled\"\n"
                                   "text 80,6.75 87.75x18.75 title3 semibold black \"Camera Driver\"\n"
                                   "text 80,27.5 40.95x16.25 body semibold gray \"Enabled\"\n"
                                   "button 281.05,10.125 76.95x30.25 \"Upgrade Camera Driver\"\n"
                                   "  clip capsule 281.05,10.125 76.95x30.25\n"
                                   "    fill rectangle 281.05,10.125 76.95x30.25 black\n"
                                   "    text 299.05,17.125 40.95x16.25 body white \"Upgrade\"\n"
                                   "menu 366,17.25 10x16 \"Camera Driver actions\"\n"
                                   "  item \"Refresh\" system \"arrow.clockwise.circle\"\n"
                                   "  item \"Remove\" system \"trash\"\n"
                                   "  indicator 366,17.25 10x16 black\n");
}

TEST_F(ACard, KeepsItsLayoutIfItsTextsAreEmpty) {
    SysExtInfo sei = camera(true, build);
    sei.driverName.clear();
    sei.state.clear();
    EXPECT_EQ(scene(sei, 100), "fill rectangle 0,20 400x60 white\n"
                               "clip circle 24,30 40x40\n"
                               "  fill rectangle 24,30 40x40 black\n"
                               "  image 33,39 22x22 \"VideoCameraDark\" named \", enabled\"\n"
                               "text 80,31.5 0x18.75 title3 semibold black \"\"\n"
                               "text 80,52.25 0x16.25 body semibold gray \"\"\n"
                               "menu 366,42 10x16 \" actions\"\n"
                               "  item \"Refresh\" system \"arrow.clockwise.circle\"\n"
                               "  item \"Remove\" system \"trash\"\n"
                               "  indicator 366,42 10x16 black\n");
}

TEST_F(ACard, ShowsItsTextsUnchanged) {
    SysExtInfo sei = camera(true, build);
    sei.driverName = "<b>%@ & \"Activate\"</b>";
    sei.state = "&lt;";
    EXPECT_EQ(window(sei).texts(), (std::vector<std::string>{sei.driverName, sei.state}));
}

TEST(TheIcon, HasItsRingOrDiscAtFullSizeEvenIfItsImageIsMissing) {
    platform::fake::FixedMetrics metrics;
    metrics.images = {{"Huge", {512, 300}}, {"HugeDark", {512, 300}}};
    for (const char* name : {"Huge", "Missing"})
        for (const bool dark : {false, true})
            EXPECT_EQ(layout(KelvraIcon{name, dark}, std::nullopt, metrics).size, (platform::ui::Size{40, 40}));
}

} // namespace
} // namespace views
