#include "model/DriverLoadingViewModel.h"

#include "tests/model/ModelTest.h"

#include <type_traits>

namespace model {
namespace {

using platform::DispatchQueue;
using Kind = platform::OSSystemExtensionRequest::Kind;

class ANewModel : public ModelTest {};
class Enumerating : public ModelTest {};
class Activating : public ModelTest {};
class Deactivating : public ModelTest {};
class AModel : public ModelTest {};

TEST_F(ANewModel, IsBlankAndHoldsThreeRecordsInFixedOrderOfWhichNothingIsKnown) {
    EXPECT_EQ(texts(), initialTexts());
    EXPECT_EQ(state(), State::blank);
    EXPECT_EQ(lastError(), "An error has occured.");
}

TEST_F(AModel, TellsWhetherItNeedsAReboot) {
    EXPECT_FALSE(model->need_reboot());
    DriverLoadingViewModelTestAccess::setNeedReboot(*model, true);
    EXPECT_TRUE(model->need_reboot());
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

TEST_F(Enumerating, AsksForTheRecordsAsTheyAreNow) {
    setRecords({recordOf("one"), recordOf("two")});
    model->enumerate();
    EXPECT_EQ(service().submissions(), (Submissions{{Kind::properties, "one"}, {Kind::properties, "two"}}));
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

/// A user's action on an extension.
struct Deed {
    void (DriverLoadingViewModel::*call)(const std::string& identifier);
    Kind kind;
    LoadingTrigger trigger;
};

class ADeed : public ModelTest, public testing::WithParamInterface<Deed> {
protected:
    void act() { (*model.*GetParam().call)(network); }
};

TEST_P(ADeed, SubmitsOneRequestOnTheMainQueueWithTheModelAsDelegateAndChangesNoRecord) {
    act();
    EXPECT_EQ(service().submissions(), (Submissions{{GetParam().kind, network}}));
    EXPECT_EQ(service().request(0)->queue(), DispatchQueue::main());
    EXPECT_EQ(service().request(0)->delegate(), model);
    EXPECT_EQ(texts(), initialTexts());
}

TEST_P(ADeed, MovesEveryStateAsTheTransitionsSay) {
    for (const auto each : allStates) {
        setState(each);
        act();
        EXPECT_EQ(state(), next(each, GetParam().trigger)) << nameOf(each);
    }
}

INSTANTIATE_TEST_SUITE_P(
    , ADeed,
    testing::Values(Deed{&DriverLoadingViewModel::activateExt, Kind::activation, LoadingTrigger::activate},
                    Deed{&DriverLoadingViewModel::deactivateExt, Kind::deactivation, LoadingTrigger::deactivate}));

TEST_F(Deactivating, LogsNothing) {
    model->deactivateExt(network);
    EXPECT_TRUE(platform::fake::loggedLines().empty());
}

} // namespace
} // namespace model
