#include "views/DriverLoadingView.h"

#include "platform/ui/Interaction.h"
#include "platform/ui/SceneHost.h"
#include "tests/support/DriverLoadingViewModelTestAccess.h"
#include "tests/support/FakeServices.h"
#include "tests/support/FakeWindow.h"
#include "tests/support/SceneText.h"
#include "views/StatusView.h"

#include <sstream>

namespace views {
namespace {

using model::DriverLoadingViewModel;
using model::DriverLoadingViewModelTestAccess;
using model::InstallStatus;
using model::SysExtInfo;
using platform::fake::FakeWindow;
using platform::fake::Submission;
using platform::fake::SystemExtensions;
using platform::ui::WindowGroup;
using Kind = platform::OSSystemExtensionRequest::Kind;

constexpr const char* baseId = "com.kelvra.driverkit.base";
constexpr const char* cameraId = "com.kelvra.ip-camera.cmio";
constexpr const char* activateBoth = "Both drivers need to be activated to run the camera";
constexpr const char* allSet = "Woohoo, you are all set!";
constexpr const char* allow = "Open Privacy & Security in System Settings to allow the extensions.";

StatusView bannerOf(const InstallStatus status) {
    return {status, "not yet", "done", "waiting"};
}

std::string scene(const StatusView& view, const platform::ui::EdgeInsets safeArea = {}) {
    return platform::fake::sceneOf(view, platform::ui::Size{450, 40}, safeArea);
}

/// A banner, and its color, its icon, and its sentence with the width.
struct Shown {
    StatusView banner;
    const char* color;
    const char* icon;
    const char* sentence;
};

TEST(TheBanner, ShowsTheColorIconAndSentenceOfItsStatus) {
    const char* const ready = "\"checkmark.circle.fill\" named \"Ready\"";
    const char* const attention = "\"exclamationmark.circle.fill\" named \"Attention\"";
    const Shown all[]{
        {bannerOf(InstallStatus::allEnabled), "182/183/126", ready, "21.6x15 callout black \"done\""},
        {bannerOf(InstallStatus::awaitingAllow), "235/110/61", attention, "37.8x15 callout black \"waiting\""},
        {bannerOf(InstallStatus::nothingInstalled), "230/198/105", attention, "37.8x15 callout black \"not yet\""},
        {{InstallStatus::allEnabled, "", "", ""}, "182/183/126", ready, "0x15 callout black \"\""},
    };
    for (const auto& [banner, color, icon, sentence] : all)
        EXPECT_EQ(scene(banner), std::string{"fill rectangle 0,0 450x40 "} + color +
                                     "\nimage 16,10 20x20 system black " + icon + "\ntext 44,12.5 " + sentence +
                                     " announced\n");
}

TEST(TheBanner, ExtendsUnderATitleBar) {
    const std::string seen = scene(bannerOf(InstallStatus::allEnabled), {28, 0, 0, 0});
    EXPECT_EQ(seen.substr(0, seen.find('\n')), "fill rectangle 0,-28 450x68 182/183/126");
}

FakeWindow windowOf(const DriverLoadingView& screen) {
    return FakeWindow{WindowGroup{[screen] { return screen; }}};
}

class TheScreen : public testing::Test {
protected:
    TheScreen() {
        const auto records = model::initialRecords();
        base_ = records[0];
        camera_ = records[1];
        network_ = records[2];
    }

    DriverLoadingView screenOf(std::vector<SysExtInfo> records, std::string baseBundleId = baseId) const {
        DriverLoadingViewModelTestAccess::setRecords(*model_, std::move(records));
        return {model_, std::move(baseBundleId)};
    }
    std::string scene(std::vector<SysExtInfo> records, std::string baseBundleId = baseId) const {
        return platform::fake::sceneOf(screenOf(std::move(records), std::move(baseBundleId)));
    }
    std::vector<std::string> texts(std::vector<SysExtInfo> records, std::string baseBundleId = baseId) const {
        return windowOf(screenOf(std::move(records), std::move(baseBundleId))).texts();
    }
    std::string sentence(std::string baseBundleId = baseId) const {
        return texts({base_, camera_, network_}, std::move(baseBundleId)).front();
    }

    platform::fake::FreshServices services_;
    std::shared_ptr<DriverLoadingViewModel> model_ = DriverLoadingViewModel::create();
    SysExtInfo base_;
    SysExtInfo camera_;
    SysExtInfo network_;
};

TEST_F(TheScreen, SaysAllSetIfBothAreEnabled) {
    camera_.enabled = network_.enabled = true;
    for (const bool flag : {false, true}) {
        base_.enabled = base_.awaiting = camera_.awaiting = network_.awaiting = flag;
        EXPECT_EQ(sentence(), allSet);
    }
}

TEST_F(TheScreen, AsksForApprovalIfOneIsEnabledAndTheOtherAwaitsIt) {
    camera_.enabled = network_.awaiting = true;
    EXPECT_EQ(sentence(), allow);
}

TEST_F(TheScreen, AsksToActivateBothIfOneIsEnabledAndNoneAwaits) {
    camera_.enabled = true;
    EXPECT_EQ(sentence(), activateBoth);
}

TEST_F(TheScreen, IgnoresTheBaseInBothCounts) {
    base_.enabled = base_.awaiting = true;
    EXPECT_EQ(sentence(), activateBoth);
}

TEST_F(TheScreen, CountsTheBaseIfAnotherIsNamedTheBaseButStillHidesItsCard) {
    base_.awaiting = true;
    EXPECT_EQ(sentence("another"), allow);
    base_.enabled = camera_.enabled = true;
    EXPECT_EQ(texts({base_, camera_, network_}, "another"),
              (std::vector<std::string>{allSet, "Camera Driver", "Not installed", "Network Driver", "Not installed"}));
}

TEST_F(TheScreen, SaysAllSetForExactlyTwo) {
    base_.enabled = camera_.enabled = network_.enabled = true;
    EXPECT_EQ(sentence("another"), activateBoth);
}

/// The default screen's banner, and the block around its cards.
const std::string banner =
    "fill rectangle 0,0 450x40 230/198/105\n"
    "image 16,10 20x20 system black \"exclamationmark.circle.fill\" named \"Attention\"\n"
    "text 44,12.5 275.4x15 callout black \"Both drivers need to be activated to run the camera\" announced\n";
const std::string top = banner + "fill rectangle 25,68 400x134 white\n";
const std::string bottom = "stroke rectangle 26,69 398x132 218.994/218.994/218.994 2\n";

/// The block, its cards, and its dividers: everything that begins at its leading edge.
std::string blockIn(const std::string& scene) {
    std::istringstream lines{scene};
    std::string block;
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with("fill rectangle 25,") || line.starts_with("stroke rectangle")) block += line + "\n";
    return block;
}

TEST_F(TheScreen, ShowsTwoCardsWithOneDividerIfTheBaseIsFirst) {
    EXPECT_EQ(blockIn(scene({base_, camera_, network_})), "fill rectangle 25,68 400x134 white\n"
                                                          "fill rectangle 25,76 400x50.5 white\n"
                                                          "fill rectangle 25,134.5 400x1 0/0/0@0.1\n"
                                                          "fill rectangle 25,143.5 400x50.5 white\n" +
                                                              bottom);
}

TEST_F(TheScreen, ShowsTwoCardsWithOneDividerIfTheBaseIsInTheMiddle) {
    EXPECT_EQ(scene({camera_, base_, network_}), scene({base_, camera_, network_}));
}

TEST_F(TheScreen, ShowsADividerBelowEachCardIfTheBaseIsLast) {
    EXPECT_EQ(blockIn(scene({camera_, network_, base_})), "fill rectangle 25,64 400x142 white\n"
                                                          "fill rectangle 25,72 400x50 white\n"
                                                          "fill rectangle 25,130 400x1 0/0/0@0.1\n"
                                                          "fill rectangle 25,139 400x50 white\n"
                                                          "fill rectangle 25,197 400x1 0/0/0@0.1\n"
                                                          "stroke rectangle 26,65 398x140 218.994/218.994/218.994 2\n");
}

TEST_F(TheScreen, ShowsNoCardsWithoutRecords) {
    EXPECT_EQ(scene({}), top + bottom);
}

TEST_F(TheScreen, DoesNotDependOnTheBaseWhileNothingIsEnabledOrAwaited) {
    EXPECT_EQ(scene({base_, camera_, network_}, "another"), scene({base_, camera_, network_}));
}

TEST_F(TheScreen, HasItsFixedSize) {
    const platform::fake::FixedMetrics metrics;
    EXPECT_EQ(layout(screenOf({base_, camera_, network_}), std::nullopt, metrics).size, (platform::ui::Size{450, 230}));
}

TEST_F(TheScreen, GivesEachCardTheCurrentBuildOfTheBundle) {
    camera_.enabled = true;
    camera_.intversion = 2105;
    EXPECT_EQ(scene({base_, camera_, network_}).find("Upgrade"), std::string::npos);
    platform::fake::setMainBundle({{"CFBundleVersion", "2106"}});
    EXPECT_NE(scene({base_, camera_, network_}).find("Upgrade"), std::string::npos);
}

TEST_F(TheScreen, StopsTheProgramIfTheBundleHasNoBuild) {
    platform::fake::setMainBundle({});
    EXPECT_DEATH(scene({base_, camera_, network_}), "CFBundleVersion");
}

TEST_F(TheScreen, SubmitsNoRequestByItself) {
    scene({base_, camera_, network_});
    EXPECT_TRUE(SystemExtensions::shared().submissions().empty());
}

TEST_F(TheScreen, CallsTheModelFromEachCard) {
    FakeWindow window = windowOf(screenOf({base_, camera_, network_}));
    window.press("Activate Network Driver");
    window.choose("Camera Driver actions", "Remove");
    EXPECT_EQ(SystemExtensions::shared().submissions(),
              (std::vector<Submission>{{Kind::activation, network_.id}, {Kind::deactivation, cameraId}}));
    window.choose("Camera Driver actions", "Refresh");
    EXPECT_EQ(SystemExtensions::shared().submissions().size(), 5u);
}

TEST_F(TheScreen, KeepsItsModelAliveInEachCallback) {
    const std::weak_ptr<DriverLoadingViewModel> model = model_;
    platform::ui::Action press;
    {
        const FakeWindow window = windowOf(screenOf({base_, camera_, network_}));
        press = std::get<platform::ui::PushButton>(controlsOf(window.scene()).front()->kind).action;
    }
    model_.reset();
    EXPECT_FALSE(model.expired());
    press.run();
    EXPECT_EQ(SystemExtensions::shared().submissions().size(), 1u);
    press = {};
    EXPECT_TRUE(model.expired());
}

TEST_F(TheScreen, KeepsFocusInACardThatLosesItsAction) {
    using namespace platform::ui;
    const platform::fake::FixedMetrics metrics;
    const Scene before = layout(screenOf({base_, camera_, network_}), std::nullopt, metrics);
    camera_.enabled = network_.enabled = true;
    camera_.intversion = network_.intversion = 2105;
    const Scene after = layout(screenOf({base_, camera_, network_}), std::nullopt, metrics);
    const auto actions = controlsOf(before);
    const auto menus = controlsOf(after);
    ASSERT_EQ(menus.size(), 2u);
    EXPECT_EQ(focusAfter(before, after, actions.at(0)->place), menus[0]->place);
    EXPECT_EQ(focusAfter(before, after, actions.at(2)->place), menus[1]->place);
}

TEST_F(TheScreen, IsRebuiltAfterAChangeOfAnyPublishedField) {
    FakeWindow window = windowOf(screenOf({base_, camera_, network_}));
    DriverLoadingViewModelTestAccess::setState(*model_, model::DriverLoadingStateMachine::State::blank);
    window.endTurn();
    EXPECT_EQ(window.rebuilds(), 1);
    DriverLoadingViewModelTestAccess::setNeedReboot(*model_, true);
    window.endTurn();
    EXPECT_EQ(window.rebuilds(), 2);
    network_.state = "Await approval";
    DriverLoadingViewModelTestAccess::setRecords(*model_, {base_, camera_, network_});
    window.endTurn();
    EXPECT_EQ(window.texts().back(), "Await approval");
}

TEST_F(TheScreen, IsRebuiltOnceForAnAnswerWithTenThousandCopies) {
    FakeWindow window = windowOf(screenOf({base_, camera_, network_}));
    model_->enumerate();
    auto& service = SystemExtensions::shared();
    service.foundProperties(service.latest(Kind::properties, cameraId),
                            std::vector(10000, platform::fake::enabledCopy(cameraId, "2.1", "2105")));
    platform::fake::drainMainQueue();
    window.endTurn();
    EXPECT_EQ(window.rebuilds(), 1);
}

} // namespace
} // namespace views
