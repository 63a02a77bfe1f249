#pragma once

#include "simulator/core/Machine.h"
#include "tests/simulator/sample/FakeDisk.h"
#include "tests/simulator/sample/Witness.h"

#include <cstdint>
#include <memory>
#include <random>
#include <set>
#include <string>

namespace simulator {

/// Where a walk's machine is kept. Of the management profile it keeps the source alone.
class Keeper {
public:
    virtual ~Keeper() = default;

    /// Called after each step, before its answers are looked at, with the numbers of the copies that have changed.
    virtual void keep(const State& state, const std::set<std::int64_t>& touched) = 0;
    /// What was kept last, read anew.
    virtual State kept() = 0;
};

/// Does random things to a machine, and after each looks whether its promises hold. Whatever happened is kept before it
/// is looked at what was answered; now and then the machine dies, and comes back with what was kept.
class RandomWalk {
public:
    /// The same seed walks the same way. The keeper outlives the walk.
    RandomWalk(unsigned seed, Keeper& keeper);

    /// Ends early when a promise is broken.
    void go(int steps);
    /// How many answers were looked at: a walk without answers has shown nothing.
    std::size_t answers() const { return witness_.answers(); }
    /// How often it was looked whether all that was answered is kept.
    std::size_t comparisons() const { return comparisons_; }
    /// What was told of copies and requests at least once, without versions and numbers of copies.
    const std::set<std::string>& ways() const { return ways_; }

private:
    std::uint32_t pick(std::uint32_t below);
    std::string anIdentifier();
    std::string aClient();
    /// The path of a bundle; now and then empty.
    std::string anApplication();

    void doSomething();
    void playThePerson();
    void rarely();
    void submit(RequestKind kind);
    void answerAQuestion();
    void changeTheMachine();
    void bringAProfile();
    void moveASwitch();
    void orderAFault();
    void install();
    void uninstall();
    void leave();
    void restart();
    void comeBack();

    Outbox takeOutbox();
    void hear();
    State keptState();

    std::mt19937 random_;
    Keeper& keeper_;
    FakeDisk disk_;
    std::unique_ptr<Machine> machine_;
    Witness witness_{disk_};
    Watch watch_;
    std::set<std::string> ways_;
    int lastName_ = 0;
    std::size_t comparisons_ = 0;
};

} // namespace simulator
