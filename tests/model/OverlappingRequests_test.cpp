#include "tests/model/ModelTest.h"

namespace model {
namespace {

using platform::fake::awaitingCopy;
using platform::fake::enabledCopy;
using testing::ElementsAre;

class OverlappingPasses : public ModelTest {};
class OverlappingRequests : public ModelTest {};

TEST_F(OverlappingPasses, AreBothAnsweredAndTheLastToArriveStands) {
    model->enumerate();
    model->enumerate();
    service().foundProperties(4, {enabledCopy(camera, "2.1", "2105")});
    service().foundProperties(2, {enabledCopy(network, "2.1", "2105")});
    service().foundProperties(1, {awaitingCopy(camera, "2.0", "2000")});
    service().foundProperties(5, {});
    service().foundProperties(3, {enabledCopy(base, "2.1", "2105")});
    service().foundProperties(0, {});
    deliver();
    EXPECT_THAT(texts(),
                ElementsAre("com.kelvra.driverkit.base 'Enabled' present enabled '2.1/2105' Ethernet 'Old Driver' 2105",
                            "com.kelvra.ip-camera.cmio 'Await approval' present awaiting '2.1/2105' VideoCamera "
                            "'Camera Driver' 2105",
                            "com.kelvra.driverkit.usb-to-poe 'Enabled' present enabled '2.1/2105' Ethernet "
                            "'Network Driver' 2105"));
    EXPECT_EQ(platform::fake::printedLines().size(), 4U);
    EXPECT_EQ(service().outstanding(), 0U);
}

TEST_F(OverlappingPasses, ComeFromAnApprovalNoticeThatArrivesAmongTheAnswersOfAPass) {
    model->enumerate();
    model->activateExt(camera);
    service().foundProperties(0, {enabledCopy(base, "2.1", "2105")});
    service().needsApproval(3);
    deliver();
    EXPECT_EQ(submittedSince(4), enumeration());
    service().foundProperties(5, {awaitingCopy(camera, "2.1", "2105")});
    service().foundProperties(1, {});
    deliver();
    EXPECT_EQ(record(cameraPosition).state, "Await approval");
    EXPECT_EQ(state(), State::needsApproval);
}

TEST_F(OverlappingPasses, MayFailInPart) {
    model->enumerate();
    service().fail(0, 4, "Not there.");
    service().foundProperties(1, {enabledCopy(camera, "2.1", "2105")});
    deliver();
    EXPECT_EQ(text(basePosition), initialBase);
    EXPECT_EQ(record(cameraPosition).state, "Enabled");
    EXPECT_EQ(state(), State::requestError);
}

TEST_F(OverlappingRequests, ShareOneState) {
    model->activateExt(camera);
    model->activateExt(network);
    service().fail(0, 12, "Superseded.");
    deliver();
    EXPECT_EQ(state(), State::requestError);
    service().finish(1, Result::completed);
    deliver();
    EXPECT_EQ(state(), State::requestError);
}

TEST_F(OverlappingRequests, WalkTheRoadOfOneActivation) {
    model->activateExt(camera);
    EXPECT_EQ(state(), State::activating);
    service().needsApproval(0);
    deliver();
    EXPECT_EQ(state(), State::needsApproval);
    service().foundProperties(2, {awaitingCopy(camera, "2.1", "2105")});
    deliver();
    EXPECT_EQ(record(cameraPosition).state, "Await approval");
    service().finish(0, Result::completed);
    deliver();
    EXPECT_EQ(state(), State::activated);
    service().foundProperties(5, {enabledCopy(camera, "2.1", "2105")});
    deliver();
    EXPECT_EQ(record(cameraPosition).state, "Enabled");
    EXPECT_THAT(platform::fake::loggedLines(),
                ElementsAre("Sysex identifier com.kelvra.ip-camera.cmio", "Sysex request needs user approval.",
                            "Sysex request finished: 0"));
    EXPECT_THAT(platform::fake::printedLines(),
                ElementsAre("com.kelvra.ip-camera.cmio n/a State: Await approval [false true false]",
                            "com.kelvra.ip-camera.cmio 2.1/2105 State: Enabled [true false false]"));
}

} // namespace
} // namespace model
