#include "simulator/store/Store.h"
#include "tests/simulator/sample/RandomWalk.h"
#include "tests/simulator/sample/SampleMac.h"
#include "tests/simulator/store/StoreFile.h"

#include <array>
#include <cstdlib>
#include <optional>
#include <utility>

namespace simulator {
namespace {

namespace fs = std::filesystem;

/// Whether what is slow only by its numbers is to be done in full.
bool isLong() {
    return std::getenv("DRIVER_MANAGER_LONG") != nullptr;
}

/// A machine on which something of everything has happened.
State aBusyState() {
    SampleMac mac;
    mac.install("2004", "enabled");
    mac.install("1999", "uninstalling", driver);
    mac.activate("a", driver);
    mac.set("denial", "silence");
    mac.mustDo(mac.machine().setApplicationsFolders({"/second", "/first"}));
    mac.mustDo(mac.machine().advance(1234));
    mac.machine().setDeveloperMode(true);
    Fault fault;
    fault.kind = Fault::Kind::error;
    fault.request = RequestKind::deactivation;
    fault.failure = failureWith(8, "It's \"broken\".\t\\\n");
    mac.mustDo(mac.machine().orderFault(fault));
    fault.kind = Fault::Kind::delay;
    fault.request.reset();
    fault.milliseconds = 90000;
    mac.mustDo(mac.machine().orderFault(fault));
    return mac.machine().state();
}

class AStore : public AStoreFile {
protected:
    static void save(Store& store, const State& state) {
        std::set<std::int64_t> all;
        for (const State& one : {store.load(), state}) {
            for (const auto& [number, copy] : one.copies)
                all.insert(number);
        }
        store.save(state, all);
    }
    void keep(const State& state) const {
        Store store{file};
        save(store, state);
    }
};

TEST_F(AStore, BeginsWithAMachineOnWhichNothingIsInstalled) {
    EXPECT_EQ(Store{file}.load(), State{});
}

TEST_F(AStore, KeepsEverythingOfAStateAndForgetsWhatIsNoLongerThere) {
    State odd;
    odd.settings.profile.source = std::string{"bplist00\0\xff\n\\\"", 13};
    odd.settings.applicationsFolders.clear();
    for (const State& state : {aBusyState(), odd, State{}}) {
        keep(state);
        EXPECT_EQ(Store{file}.load(), state);
    }
}

TEST_F(AStore, WritesWhatChangedAndNoMoreHoweverManyCopiesItHas) {
    constexpr std::uintmax_t mostForOneChange = 30000;
    Store store{file};
    State state = aBusyState();
    save(store, state);
    const auto written = [&] { return fs::file_size(file.string() + "-wal"); };
    const Copy sample = state.copies.begin()->second;
    for (int i = 0; i < (isLong() ? 10000 : 1000); ++i) {
        const std::uintmax_t before = written();
        const std::int64_t number = ++state.lastNumber;
        state.copies.emplace(number, sample).first->second.number = number;
        store.save(state, {number});
        ASSERT_LE(written(), before + mostForOneChange) << "with " << i << " copies";
    }
    const std::uintmax_t before = written();
    store.save(state, {});
    EXPECT_EQ(written(), before) << "nothing changed";
    EXPECT_EQ(store.load(), state);
}

/// The real store, which is closed and opened again for each reading.
class StoredState final : public Keeper {
public:
    explicit StoredState(std::string file) : file_{std::move(file)} { store_.emplace(file_); }

    void keep(const State& state, const std::set<std::int64_t>& touched) override { store_->save(state, touched); }
    State kept() override {
        store_.reset();
        return store_.emplace(file_).load();
    }

private:
    std::string file_;
    std::optional<Store> store_;
};

TEST_F(AStore, HasWhatWasAnsweredWhereverARandomWalkLeads) {
    const int steps = isLong() ? 100000 : 10000;
    for (const unsigned seed : {4U, 5U}) {
        StoredState stored{folder / std::to_string(seed) / "store.sqlite"};
        RandomWalk walk{seed, stored};
        walk.go(steps);
        EXPECT_GT(walk.answers(), static_cast<std::size_t>(steps / 10));
        EXPECT_GT(walk.comparisons(), static_cast<std::size_t>(steps / 2000));
    }
}

/// Statements that leave a record which is none that is written here.
constexpr std::array nonsense{
    "UPDATE record SET text = replace(text, 'activated enabled', 'asleep')",
    "UPDATE record SET text = 'clock 1x' WHERE text LIKE 'clock %'",
    "UPDATE record SET text = 'clock 1 2' WHERE text LIKE 'clock %'",
    "UPDATE record SET text = replace(text, '\"', '') WHERE text LIKE 'application %'",
    "DELETE FROM record WHERE text LIKE 'clock %'",
    "INSERT INTO record VALUES ('clock 9')",
    "INSERT INTO record SELECT text || ' ' FROM record WHERE text LIKE 'approval %'",
    "INSERT INTO record VALUES ('weather 9')",
};

TEST_F(AStore, WithARecordThatMakesNoSenseIsLeftAlone) {
    for (const auto* const statement : nonsense) {
        fs::remove(file);
        keep(aBusyState());
        tamper(statement);
        EXPECT_EQ(whyNot([&] { const Store store{file}; }), "it is damaged: a row makes no sense") << statement;
    }
}

} // namespace
} // namespace simulator
