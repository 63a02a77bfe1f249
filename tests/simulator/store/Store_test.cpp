#include "simulator/store/Store.h"
#include "tests/simulator/sample/RandomWalk.h"
#include "tests/simulator/sample/SampleMac.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <utility>

namespace simulator {
namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace fs = std::filesystem;

/// Nothing: as often as that, a tenth of it.
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

/// A state that takes a megabyte.
State aLargeState() {
    State state = aBusyState();
    for (int i = 0; i < 2000; ++i)
        state.applications.insert("/" + std::string(500, 'x') + std::to_string(i));
    return state;
}

/// Runs a function whenever SQLite opens a file while this lives. One of these lives at a time.
class WheneverOpened {
public:
    explicit WheneverOpened(std::function<void(sqlite3*)> deed) {
        deed_ = std::move(deed);
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(&run));
    }
    ~WheneverOpened() { sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(&run)); }
    WheneverOpened(const WheneverOpened&) = delete;
    WheneverOpened& operator=(const WheneverOpened&) = delete;

private:
    static int run(sqlite3* database, char**, const sqlite3_api_routines*) {
        deed_(database);
        return SQLITE_OK;
    }

    static inline std::function<void(sqlite3*)> deed_;
};

/// Calls back before each statement that is run on any file.
WheneverOpened beforeEachStatement(std::function<void()> deed) {
    static std::function<void()> call;
    call = std::move(deed);
    constexpr auto trace = [](unsigned, void*, void*, void*) { return call(), 0; };
    return WheneverOpened{[=](sqlite3* file) { sqlite3_trace_v2(file, SQLITE_TRACE_STMT, trace, nullptr); }};
}

/// A disk that has room for that many pages.
WheneverOpened smallDisk(int pages) {
    const std::string limit = "PRAGMA max_page_count = " + std::to_string(pages);
    return WheneverOpened{[=](sqlite3* file) { sqlite3_exec(file, limit.c_str(), nullptr, nullptr, nullptr); }};
}

/// Acts as a user who may not write what root may.
class AsNobody {
public:
    AsNobody() : user_{geteuid()} { EXPECT_TRUE(user_ != 0 || seteuid(65534) == 0); }
    ~AsNobody() { EXPECT_EQ(seteuid(user_), 0); }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

private:
    uid_t user_;
};

int statusOf(pid_t process) {
    int status = 0;
    EXPECT_EQ(waitpid(process, &status, 0), process);
    return status;
}

/// Whether a process that does this is killed by it.
bool kills(const std::function<void()>& deed) {
    const pid_t child = fork();
    if (child != 0) return WIFSIGNALED(statusOf(child));
    deed();
    _exit(0);
}

/// A folder in which a store may be, at a path of which only the first folder is there.
class AStore : public testing::Test {
protected:
    AStore() {
        const fs::path memory = "/dev/shm";
        std::string pattern = (fs::exists(memory) ? memory : fs::temp_directory_path()) / "store-XXXXXX";
        folder = mkdtemp(pattern.data());
        file = folder / "state" / "store.sqlite";
    }
    ~AStore() override { fs::remove_all(folder); }

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
    State kept() const { return Store{file}.load(); }

    /// The reason for which this fails, from a line that names the file.
    std::string whyNot(const std::function<void()>& deed) const {
        try {
            deed();
        } catch (const StoreFailure& failure) {
            const std::string line = failure.what();
            const std::string beginning = file.string() + ": ";
            return line.rfind(beginning, 0) == 0 ? line.substr(beginning.size()) : "not of this file: " + line;
        }
        return "nothing";
    }
    std::string whyNotOpened() const {
        return whyNot([&] { const Store store{file}; });
    }

    /// Statements of another program, which may leave the file open.
    static sqlite3* tamper(const fs::path& which, const std::string& statements) {
        fs::create_directories(which.parent_path());
        sqlite3* handle = nullptr;
        EXPECT_EQ(sqlite3_open(which.c_str(), &handle), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(handle, statements.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        return handle;
    }
    void tamper(const std::string& statements) const { sqlite3_close(tamper(file, statements)); }

    /// Of the store, or of the file beside it whose name ends so.
    std::string bytes(const std::string& ending = {}) const {
        std::ifstream stream{file.string() + ending, std::ios::binary};
        return {std::istreambuf_iterator<char>{stream}, {}};
    }
    void write(const std::string& bytes, const std::string& ending = {}) const {
        fs::create_directories(file.parent_path());
        std::ofstream{file.string() + ending, std::ios::binary} << bytes;
    }
    /// What lies in the store's folder, by name.
    std::map<std::string, std::string> contents() const {
        std::map<std::string, std::string> found;
        for (const auto& entry : fs::directory_iterator{file.parent_path()}) {
            const std::string name = entry.path().filename();
            found[name] = bytes(name.substr(file.filename().string().size()));
        }
        return found;
    }

    void expectRefusal(const testing::Matcher<std::string>& reason) const {
        const auto before = contents();
        EXPECT_THAT(whyNotOpened(), reason);
        EXPECT_TRUE(contents() == before) << "it was changed";
    }

    fs::path folder;
    fs::path file;
};

// What it keeps ------------------------------------------------------------------------------------------------------

TEST_F(AStore, BeginsWithAMachineOnWhichNothingIsInstalledAndLeavesNothingBesideIt) {
    EXPECT_EQ(kept(), State{});
    EXPECT_THAT(contents(), ElementsAre(testing::Key("store.sqlite")));
}

TEST_F(AStore, KeepsEverythingOfAState) {
    const State state = aBusyState();
    keep(state);
    EXPECT_EQ(kept(), state);
}

TEST_F(AStore, ForgetsWhatIsNoLongerThere) {
    keep(aBusyState());
    keep(State{});
    EXPECT_EQ(kept(), State{});
}

TEST_F(AStore, KeepsTheSourceOfAProfileByteByByte) {
    State state;
    state.settings.profile.source = std::string{"bplist00\0\xff\n\\\"", 13};
    keep(state);
    EXPECT_EQ(kept().settings.profile.source, state.settings.profile.source);
}

TEST_F(AStore, MayHaveNoApplicationsFolder) {
    State state;
    state.settings.applicationsFolders.clear();
    keep(state);
    EXPECT_EQ(kept(), state);
}

TEST_F(AStore, WritesWhatChangedAndNoMoreHoweverManyCopiesItHas) {
    int statements = 0;
    const auto count = beforeEachStatement([&] { ++statements; });
    Store store{file};
    State state = aBusyState();
    save(store, state);
    const Copy sample = state.copies.begin()->second;
    for (int i = 0; i < (isLong() ? 10000 : 500); ++i) {
        statements = 0;
        const std::int64_t number = ++state.lastNumber;
        state.copies.emplace(number, sample).first->second.number = number;
        store.save(state, {number});
        ASSERT_EQ(statements, 5) << "begin, the copy, the last number that goes and the one that comes, commit";
    }
    statements = 0;
    store.save(state, {});
    EXPECT_EQ(statements, 0) << "nothing changed";
    EXPECT_EQ(store.load(), state);
}

TEST_F(AStore, BelongsToOneProcessAtATime) {
    const Store store{file};
    EXPECT_EQ(whyNotOpened(), "it is in use by another service");
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

// A process that is killed -------------------------------------------------------------------------------------------

TEST_F(AStore, LosesNothingThatWasKeptWhenItsProcessIsKilled) {
    ASSERT_TRUE(kills([&] {
        Store store{file};
        save(store, aBusyState());
        std::raise(SIGKILL);
    }));
    EXPECT_EQ(kept(), aBusyState());
}

/// Kills this process before the statement of that number.
WheneverOpened deathBefore(int statement) {
    return beforeEachStatement([left = statement]() mutable {
        if (--left == 0) std::raise(SIGKILL);
    });
}

TEST_F(AStore, IsMadeAnewWhereverTheFirstAttemptWasKilled) {
    int statement = 1;
    for (; kills([&] {
             const auto death = deathBefore(statement);
             const Store store{file};
         });
         ++statement) {
        ASSERT_EQ(kept(), State{}) << "killed before statement " << statement;
        fs::remove_all(file.parent_path());
    }
    EXPECT_GT(statement, 20);
}

TEST_F(AStore, HasAllOfAChangeOrNothingOfItWhereverItsProcessIsKilled) {
    const State before = aBusyState();
    int statement = 1;
    for (bool isKilled = true; isKilled; ++statement) {
        keep(before);
        isKilled = kills([&] {
            const auto death = deathBefore(statement);
            Store store{file};
            save(store, State{});
        });
        ASSERT_EQ(kept(), isKilled ? before : State{}) << "killed before statement " << statement;
    }
    EXPECT_GT(statement, 10);
}

/// Adds this process's mark to a store that is made by whoever comes first; answers whether it could.
bool leavesItsMark(const std::string& file) {
    try {
        Store store{file};
        State state = store.load();
        state.applications.insert(std::to_string(getpid()));
        store.save(state, {});
        return true;
    } catch (const StoreFailure&) {
        return false;
    }
}

/// How many processes say yes to this. They wait for each other, and then do it all at once.
int countOfThose(int processes, const std::function<bool()>& deed) {
    std::array<int, 2> gate{};
    EXPECT_EQ(pipe(gate.data()), 0);
    std::vector<pid_t> children;
    for (int i = 0; i < processes; ++i) {
        children.push_back(fork());
        if (children.back() != 0) continue;
        close(gate[1]);
        char none = 0;
        _exit(read(gate[0], &none, 1) == 0 && deed() ? 0 : 1);
    }
    close(gate[0]);
    close(gate[1]);
    return static_cast<int>(
        std::count_if(children.begin(), children.end(), [](pid_t child) { return statusOf(child) == 0; }));
}

TEST_F(AStore, OfServicesThatBeginAtOnceLosesNothingThatOneOfThemKept) {
    for (int round = 0; round < (isLong() ? 50 : 5); ++round) {
        fs::remove_all(file.parent_path());
        const int marks = countOfThose(4, [&] { return leavesItsMark(file); });
        ASSERT_GE(marks, 1) << "one of them has it";
        ASSERT_EQ(kept().applications.size(), static_cast<std::size_t>(marks));
    }
}

// What lies in its place ---------------------------------------------------------------------------------------------

TEST_F(AStore, TakesNothingFromWhatIsLeftBesideItsPlace) {
    ASSERT_TRUE(kills([&] {
        Store store{file};
        save(store, aBusyState());
        std::raise(SIGKILL);
    }));
    ASSERT_NE(bytes("-wal"), "");
    write(bytes("-wal"), ".new-wal");
    fs::rename(file, file.string() + ".new");
    for (const auto* const ending : {"-shm", "-journal", ".new-shm", ".new-journal"})
        write("left over", ending);
    EXPECT_EQ(kept(), State{});
    EXPECT_THAT(contents(), ElementsAre(testing::Key("store.sqlite")));
}

TEST_F(AStore, TakesThePlaceOfNothingElse) {
    fs::create_directories(file);
    EXPECT_EQ(whyNotOpened(), "it cannot be opened");
    fs::remove(file);
    fs::create_symlink(folder / "unmounted.sqlite", file);
    EXPECT_EQ(whyNotOpened(), "it cannot be opened");
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(AStore, ThatIsEmptyIsLeftAlone) {
    write("");
    expectRefusal("it is damaged: it is empty");
}

TEST_F(AStore, ThatIsNoDatabaseIsLeftAlone) {
    write(std::string(10000, 'x'));
    expectRefusal("it is no store of the simulator");
}

TEST_F(AStore, OfAnotherProgramIsLeftAlone) {
    tamper("CREATE TABLE recipe (name)");
    expectRefusal("it is no store of the simulator");
}

TEST_F(AStore, OfAnotherProgramThatHasKeptNothingYetIsLeftAlone) {
    tamper("PRAGMA application_id = 7");
    expectRefusal("it is no store of the simulator");
}

TEST_F(AStore, ThatIsCutShortAnywhereIsLeftAlone) {
    keep(aBusyState());
    const std::string whole = bytes();
    for (const std::size_t length : {std::size_t{1}, std::size_t{99}, std::size_t{100}, std::size_t{511},
                                     std::size_t{4096}, whole.size() / 2, whole.size() - 4096, whole.size() - 1}) {
        write(whole.substr(0, length));
        SCOPED_TRACE(length);
        expectRefusal(AnyOf(StartsWith("it is damaged"), StartsWith("it is no store of the simulator")));
    }
}

/// What was done to a store before it is opened.
struct Harm {
    const char* name;
    const char* statements;
    const char* reason;
};

void PrintTo(const Harm& harm, std::ostream* out) {
    *out << harm.name;
}

constexpr std::array harms{
    Harm{"OfANewerVersion", "PRAGMA user_version = 3",
         "it was written by a newer simulator (version 3, this one knows 2)"},
    Harm{"OfTheVersionBefore", "PRAGMA user_version = 1",
         "it was written by an older simulator; to begin anew, delete it"},
    Harm{"ThatBecameAnotherPrograms", "PRAGMA application_id = 7", "it is no store of the simulator"},
    Harm{"WithoutATable", "DROP TABLE record", "it is damaged: no such table: record"},
    Harm{"WithAWordThatIsNone", "UPDATE record SET text = replace(text, 'activated enabled', 'asleep')",
         "it is damaged: a row makes no sense"},
    Harm{"WithANumberThatIsNone", "UPDATE record SET text = 'clock 1x' WHERE text LIKE 'clock %'",
         "it is damaged: a row makes no sense"},
    Harm{"WithAFieldTooMany", "UPDATE record SET text = 'clock 1 2' WHERE text LIKE 'clock %'",
         "it is damaged: a row makes no sense"},
    Harm{"WithoutAClock", "DELETE FROM record WHERE text LIKE 'clock %'", "it is damaged: a row makes no sense"},
    Harm{"WithTwoClocks", "INSERT INTO record VALUES ('clock 9')", "it is damaged: a row makes no sense"},
    Harm{"WithARecordOfAnUnknownKind", "INSERT INTO record VALUES ('weather 9')",
         "it is damaged: a row makes no sense"},
};

class AHarmedStore : public AStore, public testing::WithParamInterface<Harm> {
protected:
    AHarmedStore() { keep(aBusyState()); }
};

TEST_P(AHarmedStore, IsLeftAlone) {
    tamper(GetParam().statements);
    expectRefusal(GetParam().reason);
}

/// What was changed last stands beside the file, and would be another's to mend.
TEST_P(AHarmedStore, IsLeftAloneWithTheLogOfAProcessThatWasKilled) {
    ASSERT_TRUE(kills([&] {
        tamper(file, GetParam().statements);
        std::raise(SIGKILL);
    }));
    ASSERT_NE(bytes("-wal"), "");
    expectRefusal(GetParam().reason);
}

INSTANTIATE_TEST_SUITE_P(, AHarmedStore, testing::ValuesIn(harms), [](const auto& which) { return which.param.name; });

TEST_F(AStore, OfANewerVersionByItselfAndByItsLogIsLeftAlone) {
    keep(aBusyState());
    ASSERT_TRUE(kills([&] {
        tamper(file, "PRAGMA user_version = 3; PRAGMA wal_checkpoint(TRUNCATE); INSERT INTO record VALUES ('clock 9')");
        std::raise(SIGKILL);
    }));
    expectRefusal("it was written by a newer simulator (version 3, this one knows 2)");
}

TEST_F(AStore, ThatIsDamagedIsLeftAloneAndItsLogToo) {
    keep(aLargeState());
    ASSERT_TRUE(kills([&] {
        tamper(file, "INSERT INTO record VALUES ('application \"/a.app\"')");
        std::raise(SIGKILL);
    }));
    std::fstream{file, std::ios::in | std::ios::out | std::ios::binary}.seekp(40 * 4096) << std::string(4096, '\x5a');
    expectRefusal("it is damaged");
}

TEST_F(AStore, WhoseRowsAreOutOfOrderIsLeftAlone) {
    State state;
    state.applications = {"/one.app", "/two.app"};
    keep(state);
    std::string damaged = bytes();
    damaged.replace(damaged.find("/one.app"), 8, "/zzz.app");
    write(damaged);
    expectRefusal("it is damaged");
}

// Where it cannot be written -----------------------------------------------------------------------------------------

TEST_F(AStore, SaysThatItsFolderCannotBeCreated) {
    std::ofstream{folder / "state"} << "a file";
    EXPECT_EQ(whyNotOpened(), "its folder cannot be created: Not a directory");
}

TEST_F(AStore, ThatCannotBeBegunSaysSoUnderItsOwnName) {
    fs::create_directories(file.parent_path());
    fs::permissions(folder, fs::perms{0755});
    fs::permissions(file.parent_path(), fs::perms{0555});
    {
        const AsNobody nobody;
        EXPECT_EQ(whyNotOpened(), "it cannot be opened");
    }
    EXPECT_THAT(contents(), IsEmpty());
}

TEST_F(AStore, ThatCannotBeWrittenSaysSo) {
    keep(aBusyState());
    fs::permissions(folder, fs::perms{0755});
    fs::permissions(file.parent_path(), fs::perms{0555});
    fs::permissions(file, fs::perms{0444});
    const AsNobody nobody;
    expectRefusal("it cannot be written");
}

TEST_F(AStore, ThatDoesNotFitOnTheDiskWhenItBeginsLeavesNothing) {
    {
        const auto disk = smallDisk(1);
        EXPECT_EQ(whyNotOpened(), "the disk is full");
    }
    EXPECT_THAT(contents(), IsEmpty());
    EXPECT_EQ(kept(), State{});
}

TEST_F(AStore, OnAFullDiskFailsAndKeepsWhatItHad) {
    {
        const auto disk = smallDisk(100);
        Store store{file};
        save(store, aBusyState());
        EXPECT_EQ(whyNot([&] { save(store, aLargeState()); }), "the disk is full");
    }
    EXPECT_EQ(kept(), aBusyState());
}

/// No file may grow beyond that size while it lives.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : handler_{std::signal(SIGXFSZ, SIG_IGN)} {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    void (*handler_)(int);
    rlimit before_{};
};

TEST_F(AStore, ThatCannotGrowFailsAndKeepsWhatItHad) {
    {
        Store store{file};
        save(store, aBusyState());
        const FileSizeLimit limit{100000};
        EXPECT_EQ(whyNot([&] { save(store, aLargeState()); }), "the disk cannot be read or written");
    }
    EXPECT_EQ(kept(), aBusyState());
}

// What others do to it while it is in use ----------------------------------------------------------------------------

class AStoreInUse : public AStore {
protected:
    AStoreInUse() { save(store, aBusyState()); }

    void expectFailure() {
        EXPECT_EQ(whyNot([&] { save(store, State{}); }), "it was deleted or replaced while it was in use");
    }

    Store store{file};
};

TEST_F(AStoreInUse, KeepsNoChangeWhereItWasDeleted) {
    fs::remove(file);
    expectFailure();
    EXPECT_EQ(kept(), State{}) << "it begins anew";
}

TEST_F(AStoreInUse, KeepsNoChangeWhereItsFolderWasDeleted) {
    fs::remove_all(file.parent_path());
    expectFailure();
}

TEST_F(AStoreInUse, KeepsNoChangeWhereItsLogWasDeleted) {
    fs::remove(file.string() + "-wal");
    expectFailure();
}

TEST_F(AStoreInUse, LeavesTheStoreThatTookItsPlaceAsItIs) {
    State other;
    other.clock = 7;
    Store{folder / "other.sqlite"}.save(other, {});
    fs::rename(folder / "other.sqlite", file);
    expectFailure();
    EXPECT_EQ(kept(), other);
}

} // namespace
} // namespace simulator
