#include "tests/simulator/sample/RandomWalk.h"

#include <cstdlib>

namespace simulator {
namespace {

/// Keeps what the machine says that it touched, and no other copy.
class Memory final : public Keeper {
public:
    void keep(const State& state, const std::set<std::int64_t>& touched) override {
        std::map<std::int64_t, Copy> copies = std::move(state_.copies);
        for (const std::int64_t number : touched) {
            const auto copy = state.copies.find(number);
            copies.erase(number);
            if (copy != state.copies.end()) copies.insert(*copy);
        }
        state_ = state;
        state_.copies = std::move(copies);
    }
    State kept() override { return state_; }

private:
    State state_;
};

/// Each step that a copy can take, as a real Mac has it.
const std::set<std::string> waysOfCopies{
    "absent -> validating",
    "validating -> absent",
    "validating -> staging",
    "staging -> absent",
    "staging -> activated enabled",
    "staging -> activated waiting for user",
    "absent -> activated enabled",
    "absent -> activated waiting for user",
    "absent -> activated disabled",
    "absent -> terminated waiting to uninstall on reboot",
    "activated waiting for user -> absent",
    "activated waiting for user -> activated enabled",
    "activated waiting for user -> terminating for uninstall",
    "activated enabled -> activated disabled",
    "activated enabled -> terminating for upgrade via delegate",
    "activated enabled -> terminating for uninstall",
    "activated disabled -> activated enabled",
    "activated disabled -> terminating for upgrade via delegate",
    "activated disabled -> terminating for uninstall",
    "terminating for upgrade via delegate -> absent",
    "terminating for upgrade via delegate -> terminated waiting to uninstall on reboot",
    "terminating for uninstall -> terminated waiting to uninstall on reboot",
    "terminated waiting to uninstall on reboot -> absent",
};

/// Each answer that a request of any kind can have.
const std::set<std::string> answersOfRequests{
    "activation submitted",      "activation asked for replacement",
    "activation needs approval", "activation finished 0",
    "activation finished 1",     "activation failed 1",
    "activation failed 4",       "activation failed 8",
    "activation failed 10",      "activation failed 11",
    "activation failed 12",      "deactivation submitted",
    "deactivation finished 0",   "deactivation finished 1",
    "deactivation failed 1",     "deactivation failed 4",
    "deactivation failed 11",    "deactivation failed 12",
    "deactivation failed 13",    "properties submitted",
    "properties found",          "properties failed 1",
    "properties failed 4",       "properties failed 11",
};

TEST(RandomWalks, ReachEveryTransitionAndNoOtherAndBreakNoRule) {
    const int steps = std::getenv("DRIVER_MANAGER_LONG") ? 100000 : 10000;
    std::set<std::string> taken;
    for (const unsigned seed : {13U, 14U, 15U}) {
        Memory memory;
        RandomWalk walk{seed, memory};
        walk.go(steps);
        taken.insert(walk.ways().begin(), walk.ways().end());
        EXPECT_GT(walk.comparisons(), 0U);
    }
    std::set<std::string> ways = waysOfCopies;
    ways.insert(answersOfRequests.begin(), answersOfRequests.end());
    EXPECT_THAT(taken, testing::ContainerEq(ways));
}

} // namespace
} // namespace simulator
