#pragma once

#include "simulator/core/State.h"
#include "simulator/store/RecordFile.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace simulator {

/// Keeps the simulated machine in a file. One process at a time has it. Every member throws StoreFailure; after that
/// the store is not to be used any more.
class Store {
public:
    /// Opens what is there, or begins with a machine on which nothing is installed where there is nothing. What cannot
    /// be used is left as it is.
    explicit Store(const std::string& file);

    /// What was kept last. Of the management profile it has the source alone.
    State load() const;
    /// Keeps a state that differs from the last in no other copies than these, which may be there or not, in one
    /// transaction. When it returns, a kill of this process loses nothing of it. Takes as long as the change is large,
    /// however many copies there are.
    void save(const State& state, const std::set<std::int64_t>& touched);

private:
    RecordFile file_;
    /// What was kept last: the copies by their numbers, and everything else.
    std::map<std::int64_t, std::string> copies_;
    Records others_;
};

} // namespace simulator
