#include "simulator/store/Store.h"
#include "tests/simulator/sample/RandomWalk.h"

#include <cstdlib>
#include <filesystem>
#include <optional>

namespace simulator {
namespace {

/// The real store, which is closed and opened again for each reading.
class StoredState final : public Keeper {
public:
    StoredState() {
        std::string pattern = temporaryFolder() / "walk-XXXXXX";
        folder_ = mkdtemp(pattern.data());
        open();
    }
    ~StoredState() override {
        store_.reset();
        std::filesystem::remove_all(folder_);
    }

    void keep(const State& state, const std::set<std::int64_t>& touched) override { store_->save(state, touched); }
    State kept() override {
        store_.reset();
        open();
        return store_->load();
    }

private:
    /// In memory where that can be, for the walk writes a hundred thousand times.
    static std::filesystem::path temporaryFolder() {
        const std::filesystem::path memory = "/dev/shm";
        return std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path();
    }

    void open() { store_.emplace(folder_ / "store.sqlite"); }

    std::filesystem::path folder_;
    std::optional<Store> store_;
};

class ARandomWalkThatIsStored : public testing::TestWithParam<unsigned> {};

TEST_P(ARandomWalkThatIsStored, HasInTheStoreWhatWasAnswered) {
    StoredState stored;
    RandomWalk walk{GetParam(), stored};
    walk.go(100000);
    EXPECT_GT(walk.answers(), 10000U);
    EXPECT_GT(walk.comparisons(), 50U);
}

INSTANTIATE_TEST_SUITE_P(WithSeed, ARandomWalkThatIsStored, testing::Values(4U, 5U));

} // namespace
} // namespace simulator
