#pragma once

#include "simulator/store/Database.h"
#include "simulator/store/StoreFolder.h"

#include <cstdint>
#include <set>
#include <string>

namespace simulator {

/// Keeps the simulated machine in a file of SQLite's. One process at a time has it. Every member throws StoreFailure;
/// after that the file is as it was, and the store is not to be used any more.
class Store {
public:
    static constexpr std::int64_t version = 1;

    /// Opens what is there, or begins with a machine on which nothing is installed where there is nothing.
    explicit Store(const std::string& file);

    /// What was kept last. Of the management profile it has the source alone.
    const State& load() const { return kept_; }
    /// Keeps a state, in one transaction. When it returns, a kill of this process loses nothing of it.
    void save(const State& state);
    /// The same for one that differs from the last in no other copies than these, which may be there or not. Takes
    /// as long as the change is large, however many copies there are.
    void save(const State& state, const std::set<std::int64_t>& touched);

private:
    explicit Store(const StoreFolder& folder);
    void checkContents();
    State read();
    void writeCopies(const State& state, const std::set<std::int64_t>& changed);
    void writeParts(const State& state);
    void remember(const State& state, const std::set<std::int64_t>& changed);

    Database database_;
    State kept_;
};

} // namespace simulator
