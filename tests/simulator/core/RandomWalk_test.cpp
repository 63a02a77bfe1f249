#include "tests/simulator/sample/RandomWalk.h"

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

TEST_P(ARandomWalk, OfAHundredThousandStepsBreaksNoPromise) {
    Memory memory;
    RandomWalk walk{GetParam(), memory};
    walk.go(100000);
    EXPECT_GT(walk.answers(), 10000U);
}

INSTANTIATE_TEST_SUITE_P(WithSeed, ARandomWalk, testing::Values(1U, 2U, 3U));

} // namespace
} // namespace simulator
