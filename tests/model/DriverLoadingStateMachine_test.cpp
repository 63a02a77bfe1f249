#include "model/DriverLoadingStateMachine.h"

#include "tests/model/StateNames.h"

#include <array>
#include <functional>
#include <string>
#include <type_traits>
#include <unordered_set>

namespace model {
namespace {

using State = DriverLoadingStateMachine::State;

struct Cell {
    State from;
    LoadingTrigger trigger;
    State to;
};

void PrintTo(const Cell& cell, std::ostream* out) {
    *out << nameOf(cell.trigger) << " from " << nameOf(cell.from);
}

// clang-format off
constexpr std::array<Cell, 48> cells{{
    {State::blank, LoadingTrigger::activate, State::activating},
    {State::blank, LoadingTrigger::deactivate, State::deactivating},
    {State::blank, LoadingTrigger::needsApproval, State::blank},
    {State::blank, LoadingTrigger::completed, State::activated},
    {State::blank, LoadingTrigger::afterReboot, State::activatedUponReboot},
    {State::blank, LoadingTrigger::failed, State::requestError},
    {State::unloaded, LoadingTrigger::activate, State::activating},
    {State::unloaded, LoadingTrigger::deactivate, State::deactivating},
    {State::unloaded, LoadingTrigger::needsApproval, State::blank},
    {State::unloaded, LoadingTrigger::completed, State::blank},
    {State::unloaded, LoadingTrigger::afterReboot, State::blank},
    {State::unloaded, LoadingTrigger::failed, State::blank},
    {State::activating, LoadingTrigger::activate, State::activating},
    {State::activating, LoadingTrigger::deactivate, State::blank},
    {State::activating, LoadingTrigger::needsApproval, State::needsApproval},
    {State::activating, LoadingTrigger::completed, State::activated},
    {State::activating, LoadingTrigger::afterReboot, State::activatedUponReboot},
    {State::activating, LoadingTrigger::failed, State::requestError},
    {State::needsApproval, LoadingTrigger::activate, State::activating},
    {State::needsApproval, LoadingTrigger::deactivate, State::deactivating},
    {State::needsApproval, LoadingTrigger::needsApproval, State::needsApproval},
    {State::needsApproval, LoadingTrigger::completed, State::activated},
    {State::needsApproval, LoadingTrigger::afterReboot, State::activatedUponReboot},
    {State::needsApproval, LoadingTrigger::failed, State::requestError},
    {State::activated, LoadingTrigger::activate, State::activating},
    {State::activated, LoadingTrigger::deactivate, State::deactivating},
    {State::activated, LoadingTrigger::needsApproval, State::blank},
    {State::activated, LoadingTrigger::completed, State::activated},
    {State::activated, LoadingTrigger::afterReboot, State::activatedUponReboot},
    {State::activated, LoadingTrigger::failed, State::requestError},
    {State::activatedUponReboot, LoadingTrigger::activate, State::activating},
    {State::activatedUponReboot, LoadingTrigger::deactivate, State::blank},
    {State::activatedUponReboot, LoadingTrigger::needsApproval, State::blank},
    {State::activatedUponReboot, LoadingTrigger::completed, State::activated},
    {State::activatedUponReboot, LoadingTrigger::afterReboot, State::activatedUponReboot},
    {State::activatedUponReboot, LoadingTrigger::failed, State::requestError},
    {State::requestError, LoadingTrigger::activate, State::activating},
    {State::requestError, LoadingTrigger::deactivate, State::deactivating},
    {State::requestError, LoadingTrigger::needsApproval, State::requestError},
    {State::requestError, LoadingTrigger::completed, State::requestError},
    {State::requestError, LoadingTrigger::afterReboot, State::requestError},
    {State::requestError, LoadingTrigger::failed, State::requestError},
    {State::deactivating, LoadingTrigger::activate, State::blank},
    {State::deactivating, LoadingTrigger::deactivate, State::deactivating},
    {State::deactivating, LoadingTrigger::needsApproval, State::needsApproval},
    {State::deactivating, LoadingTrigger::completed, State::blank},
    {State::deactivating, LoadingTrigger::afterReboot, State::blank},
    {State::deactivating, LoadingTrigger::failed, State::requestError},
}};
// clang-format on

class ATransition : public testing::TestWithParam<Cell> {};

TEST_P(ATransition, LeadsWhereTheTableSays) {
    EXPECT_EQ(next(GetParam().from, GetParam().trigger), GetParam().to);
}

std::string nameOfCell(const testing::TestParamInfo<Cell>& info) {
    const auto& cell = info.param;
    return std::string{nameOf(cell.trigger)} + "From" + nameOf(cell.from) + "Gives" + nameOf(cell.to);
}

INSTANTIATE_TEST_SUITE_P(EachCell, ATransition, testing::ValuesIn(cells), nameOfCell);

constexpr State after(const State state) {
    return state;
}

/// The state after the triggers, one after the other, of a model that is new.
template <typename... More>
constexpr State after(const State state, const LoadingTrigger first, const More... more) {
    return after(next(state, first), more...);
}

TEST(TheTransitions, LeadFromActivatingOverApprovalToActivated) {
    EXPECT_EQ(after(State::blank, LoadingTrigger::activate), State::activating);
    EXPECT_EQ(after(State::blank, LoadingTrigger::activate, LoadingTrigger::needsApproval), State::needsApproval);
    EXPECT_EQ(after(State::blank, LoadingTrigger::activate, LoadingTrigger::needsApproval, LoadingTrigger::completed),
              State::activated);
}

TEST(TheTransitions, CancelAnActivationByADeactivation) {
    EXPECT_EQ(after(State::blank, LoadingTrigger::activate), State::activating);
    EXPECT_EQ(after(State::blank, LoadingTrigger::activate, LoadingTrigger::deactivate), State::blank);
}

TEST(TheTransitions, KeepAFailureWhenApprovalIsNeeded) {
    EXPECT_EQ(after(State::blank, LoadingTrigger::failed, LoadingTrigger::needsApproval), State::requestError);
}

TEST(TheTransitions, LeadFromDeactivatingToBlankOnCompletion) {
    EXPECT_EQ(after(State::blank, LoadingTrigger::deactivate), State::deactivating);
    EXPECT_EQ(after(State::blank, LoadingTrigger::deactivate, LoadingTrigger::completed), State::blank);
}

TEST(TheTransitions, NeverLeadIntoUnloaded) {
    for (const auto& cell : cells) {
        EXPECT_NE(next(cell.from, cell.trigger), State::unloaded) << testing::PrintToString(cell);
    }
}

TEST(TheState, IsOneByteThatComparesAndHashesByCase) {
    static_assert(sizeof(State) == 1);
    const std::unordered_set<State> different(allStates.begin(), allStates.end());
    EXPECT_EQ(different.size(), 8U);
    EXPECT_EQ(std::hash<State>{}(State::activated), std::hash<State>{}(State::activated));
}

TEST(TheState, HasItsCasesInOrder) {
    for (std::size_t position = 0; position < allStates.size(); ++position) {
        EXPECT_EQ(static_cast<std::size_t>(allStates[position]), position);
    }
}

TEST(TheStateMachine, OnlyScopesTheState) {
    static_assert(!std::is_default_constructible_v<DriverLoadingStateMachine>);
    static_assert(std::is_empty_v<DriverLoadingStateMachine>);
}

} // namespace
} // namespace model
