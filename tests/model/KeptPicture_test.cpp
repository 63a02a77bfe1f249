#include "tests/model/ModelTest.h"

// A running model keeps what an answer does not speak of. Each test puts it beside a new model that hears the same
// answer, as it would after a restart of the application.

namespace model {
namespace {

using platform::fake::awaitingCopy;
using platform::fake::copyOf;
using platform::fake::enabledCopy;

class ARunningModel : public ModelTest {
protected:
    /// The camera as the running model and a new one show it after an answer of these copies.
    void hear(const Copies& copies) {
        const auto newModel = DriverLoadingViewModel::create();
        answer(*newModel, copies);
        answer(copies);
        shownByANewModel = textOf(newModel->sei()[cameraPosition]);
        shown = text(cameraPosition);
    }

    std::string shown;
    std::string shownByANewModel;
};

TEST_F(ARunningModel, StillShowsARemovedExtensionAsEnabledWhereANewOneShowsItNotInstalled) {
    answer({enabledCopy(camera, "2.1", "2105")});
    model->deactivateExt(camera);
    service().finish(service().latest(Kind::deactivation, camera), Result::completed);
    deliver();
    hear({});
    EXPECT_EQ(shown, "com.kelvra.ip-camera.cmio 'Enabled' present enabled '2.1/2105' VideoCamera 'Camera Driver' 2105");
    EXPECT_EQ(shownByANewModel, initialCamera);
}

TEST_F(ARunningModel, StillAsksForARebootWhereANewOneKnowsOfNone) {
    finish(Result::willCompleteAfterReboot);
    hear({copyOf(camera, "2.1", "2105")});
    EXPECT_EQ(shown, "com.kelvra.ip-camera.cmio 'Need reboot' present reboot 'n/a' VideoCamera 'Camera Driver' 0");
    EXPECT_EQ(shownByANewModel, "com.kelvra.ip-camera.cmio '' present 'n/a' VideoCamera 'Camera Driver' 0");
}

TEST_F(ARunningModel, StillShowsTheBuildThatIsNoLongerEnabledWhereANewOneKnowsNoBuild) {
    answer({enabledCopy(camera, "2.0", "2000")});
    hear({awaitingCopy(camera, "2.1", "2105")});
    EXPECT_EQ(shown, "com.kelvra.ip-camera.cmio 'Await approval' present awaiting '2.0/2000' VideoCamera "
                     "'Camera Driver' 2000");
    EXPECT_EQ(shownByANewModel,
              "com.kelvra.ip-camera.cmio 'Await approval' present awaiting 'n/a' VideoCamera 'Camera Driver' 0");
}

TEST_F(ARunningModel, StillHasTheIntegerOfAnEarlierBuildWhereANewOneHasNone) {
    answer({enabledCopy(camera, "2.0", "2000")});
    hear({enabledCopy(camera, "2.1", "2.1.5")});
    EXPECT_EQ(shown,
              "com.kelvra.ip-camera.cmio 'Enabled' present enabled '2.1/2.1.5' VideoCamera 'Camera Driver' 2000");
    EXPECT_EQ(shownByANewModel,
              "com.kelvra.ip-camera.cmio 'Enabled' present enabled '2.1/2.1.5' VideoCamera 'Camera Driver' 0");
}

TEST_F(ARunningModel, ShowsAnAnsweredExtensionAsANewOneDoes) {
    answer({awaitingCopy(camera, "2.0", "2000")});
    hear({enabledCopy(camera, "2.1", "2105")});
    EXPECT_EQ(shown, "com.kelvra.ip-camera.cmio 'Enabled' present enabled '2.1/2105' VideoCamera 'Camera Driver' 2105");
    EXPECT_EQ(shownByANewModel, shown);
}

} // namespace
} // namespace model
