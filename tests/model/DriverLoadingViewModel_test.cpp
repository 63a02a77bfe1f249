#include "model/DriverLoadingViewModel.h"

#include "tests/model/ModelTest.h"

#include <type_traits>

namespace model {
namespace {

using platform::DispatchQueue;

class ANewModel : public ModelTest {};
class Enumerating : public ModelTest {};
class Activating : public ModelTest {};
class Deactivating : public ModelTest {};
class AModel : public ModelTest {};

TEST_F(ANewModel, HoldsThreeRecordsInFixedOrderOfWhichNothingIsKnown) {
    EXPECT_EQ(texts(), initialTexts());
}

TEST_F(ANewModel, IsBlank) {
    EXPECT_EQ(state(), State::blank);
}

TEST_F(ANewModel, NeedsNoReboot) {
    EXPECT_FALSE(model->need_reboot());
}

TEST_F(AModel, TellsWhetherItNeedsAReboot) {
    DriverLoadingViewModelTestAccess::setNeedReboot(*model, true);
    EXPECT_TRUE(model->need_reboot());
}

TEST_F(ANewModel, HoldsTheInitialErrorText) {
    EXPECT_EQ(lastError(), "An error has occured.");
}

TEST_F(ANewModel, SubmitsLogsAndPrintsNothing) {
    EXPECT_TRUE(service().submissions().empty());
    EXPECT_TRUE(platform::fake::loggedLines().empty());
    EXPECT_TRUE(platform::fake::printedLines().empty());
    EXPECT_EQ(platform::fake::drainMainQueue(), 0U);
}

TEST_F(AModel, IsNeitherCopiedNorMoved) {
    static_assert(!std::is_copy_constructible_v<DriverLoadingViewModel>);
    static_assert(!std::is_move_constructible_v<DriverLoadingViewModel>);
    static_assert(!std::is_copy_assignable_v<DriverLoadingViewModel>);
}

TEST_F(AModel, SharesNothingWithAnother) {
    const auto other = DriverLoadingViewModel::create();
    answer({platform::fake::enabledCopy(camera, "2.1", "2105")});
    model->activateExt(camera);
    EXPECT_EQ(textsOf(other->sei()), initialTexts());
    EXPECT_EQ(DriverLoadingViewModelTestAccess::state(*other), State::blank);
}

TEST_F(Enumerating, AsksForThePropertiesOfBaseCameraAndNetworkInThatOrder) {
    model->enumerate();
    EXPECT_EQ(service().submissions(), enumeration());
}

TEST_F(Enumerating, NamesTheMainQueueAndTheModelInEachRequest) {
    model->enumerate();
    for (std::size_t submission = 0; submission < 3; ++submission) {
        EXPECT_EQ(service().request(submission)->queue(), DispatchQueue::main());
        EXPECT_EQ(service().request(submission)->delegate(), model);
    }
}

TEST_F(Enumerating, LogsNothingAndKeepsEveryState) {
    for (const auto each : allStates) {
        setState(each);
        model->enumerate();
        EXPECT_EQ(state(), each);
    }
    EXPECT_TRUE(platform::fake::loggedLines().empty());
}

TEST_F(Enumerating, SubmitsNothingForAnEmptyList) {
    setRecords({});
    model->enumerate();
    EXPECT_TRUE(service().submissions().empty());
}

TEST_F(Enumerating, AsksForTheRecordsAsTheyAreNow) {
    setRecords({recordOf("one"), recordOf("two")});
    model->enumerate();
    EXPECT_EQ(service().submissions(), (Submissions{{Kind::properties, "one"}, {Kind::properties, "two"}}));
}

TEST_F(Activating, SubmitsAnActivationOnTheMainQueueWithTheModelAsDelegate) {
    model->activateExt(camera);
    EXPECT_EQ(service().submissions(), (Submissions{{Kind::activation, camera}}));
    EXPECT_EQ(service().request(0)->queue(), DispatchQueue::main());
    EXPECT_EQ(service().request(0)->delegate(), model);
}

TEST_F(Activating, LogsTheIdentifier) {
    model->activateExt(camera);
    EXPECT_EQ(platform::fake::loggedLines(), (std::vector<std::string>{"Sysex identifier com.kelvra.ip-camera.cmio"}));
}

TEST_F(Activating, MovesEveryStateAsTheTransitionsSay) {
    for (const auto each : allStates) {
        setState(each);
        model->activateExt(camera);
        EXPECT_EQ(state(), next(each, LoadingTrigger::activate)) << nameOf(each);
    }
}

TEST_F(Activating, TwiceTheSameSubmitsTwoRequests) {
    model->activateExt(camera);
    model->activateExt(camera);
    EXPECT_EQ(service().submissions(), (Submissions{{Kind::activation, camera}, {Kind::activation, camera}}));
}

TEST_F(Activating, TakesAnIdentifierThatIsInNoRecordAndNeverReadsItAsAFormat) {
    model->activateExt("%@ %d");
    EXPECT_EQ(service().submissions(), (Submissions{{Kind::activation, "%@ %d"}}));
    EXPECT_EQ(platform::fake::loggedLines(), (std::vector<std::string>{"Sysex identifier %@ %d"}));
}

TEST_F(Activating, ChangesNoRecordAndAsksForNoProperties) {
    model->activateExt(network);
    EXPECT_EQ(texts(), initialTexts());
    EXPECT_EQ(service().submissions().size(), 1U);
}

TEST_F(Deactivating, SubmitsADeactivationOnTheMainQueueWithTheModelAsDelegate) {
    model->deactivateExt(network);
    EXPECT_EQ(service().submissions(), (Submissions{{Kind::deactivation, network}}));
    EXPECT_EQ(service().request(0)->queue(), DispatchQueue::main());
    EXPECT_EQ(service().request(0)->delegate(), model);
}

TEST_F(Deactivating, LogsNothing) {
    model->deactivateExt(network);
    EXPECT_TRUE(platform::fake::loggedLines().empty());
}

TEST_F(Deactivating, MovesEveryStateAsTheTransitionsSay) {
    for (const auto each : allStates) {
        setState(each);
        model->deactivateExt(camera);
        EXPECT_EQ(state(), next(each, LoadingTrigger::deactivate)) << nameOf(each);
    }
}

TEST_F(Deactivating, ChangesNoRecordAndAsksForNoProperties) {
    model->deactivateExt(network);
    EXPECT_EQ(texts(), initialTexts());
    EXPECT_EQ(service().submissions().size(), 1U);
}

} // namespace
} // namespace model
