#include "model/DriverLoadingStateMachine.h"

#include "tests/model/ModelTest.h"

#include <array>
#include <string>
#include <type_traits>
#include <vector>

namespace model {
namespace {

using State = DriverLoadingStateMachine::State;

/// The next states of a state, in the order of the triggers.
struct Row {
    State from;
    std::array<State, 6> to;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << nameOf(row.from);
}

std::vector<Row> rows() {
    using enum DriverLoadingStateMachine::State;
    // clang-format off
    return {
        //                    activate    deactivate    needsApproval  completed     afterReboot          failed
        {blank,               {activating, deactivating, blank,         activated,    activatedUponReboot, requestError}},
        {unloaded,            {activating, deactivating, blank,         blank,        blank,               blank}},
        {activating,          {activating, blank,        needsApproval, activated,    activatedUponReboot, requestError}},
        {needsApproval,       {activating, deactivating, needsApproval, activated,    activatedUponReboot, requestError}},
        {activated,           {activating, deactivating, blank,         activated,    activatedUponReboot, requestError}},
        {activatedUponReboot, {activating, blank,        blank,         activated,    activatedUponReboot, requestError}},
        {requestError,        {activating, deactivating, requestError,  requestError, requestError,        requestError}},
        {deactivating,        {blank,      deactivating, needsApproval, blank,        blank,               requestError}},
    };
    // clang-format on
}

class ATransition : public testing::TestWithParam<Row> {};

TEST_P(ATransition, LeadsWhereTheTableSays) {
    std::vector<State> reached;
    for (const auto trigger : {LoadingTrigger::activate, LoadingTrigger::deactivate, LoadingTrigger::needsApproval,
                               LoadingTrigger::completed, LoadingTrigger::afterReboot, LoadingTrigger::failed})
        reached.push_back(next(GetParam().from, trigger));
    EXPECT_THAT(reached, testing::ElementsAreArray(GetParam().to));
}

INSTANTIATE_TEST_SUITE_P(From, ATransition, testing::ValuesIn(rows()),
                         [](const auto& row) { return std::string{nameOf(row.param.from)}; });

static_assert(transitions::table.size() == static_cast<std::size_t>(State::deactivating) + 1, "a row for each state");

TEST(TheStateMachine, OnlyScopesTheState) {
    static_assert(!std::is_default_constructible_v<DriverLoadingStateMachine>);
    static_assert(std::is_empty_v<DriverLoadingStateMachine>);
}

} // namespace
} // namespace model
