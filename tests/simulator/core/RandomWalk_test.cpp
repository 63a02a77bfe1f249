#include "tests/simulator/sample/RandomWalk.h"
#include "tests/simulator/sample/Rows.h"

namespace simulator {
namespace {

class Memory final : public Keeper {
public:
    void keep(const State& state, const std::set<std::int64_t>&) override { state_ = state; }
    State kept() override { return state_; }

private:
    State state_;
};

class ARandomWalk : public testing::TestWithParam<unsigned> {};

TEST_P(ARandomWalk, OfAHundredThousandStepsTakesEveryRowOfBothTablesAndBreaksNoPromise) {
    Memory memory;
    RandomWalk walk{GetParam(), memory};
    walk.go(100000);
    EXPECT_GT(walk.answers(), 10000U);
    for (const CopyTransition& row : copyTransitions)
        EXPECT_EQ(walk.copyTransitions().count(&row), 1U) << textOf(row) << ": never taken";
    for (const RequestTransition& row : requestTransitions)
        EXPECT_EQ(walk.requestTransitions().count(&row), 1U) << textOf(row) << ": never taken";
}

INSTANTIATE_TEST_SUITE_P(WithSeed, ARandomWalk, testing::Values(1U, 2U, 3U));

} // namespace
} // namespace simulator
