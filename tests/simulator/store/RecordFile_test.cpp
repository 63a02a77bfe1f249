#include "simulator/store/RecordFile.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;

namespace fs = std::filesystem;

const Records first{"a first record"};
const Records some{"one \"record\"", "and\nanother", std::string{"and a \0 byte", 12}, "\xff"};

/// Records that take a megabyte.
Records many() {
    Records records;
    for (int i = 0; i < 2000; ++i)
        records.insert(std::string(500, 'x') + std::to_string(i));
    return records;
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

/// A folder in which a file of records may be, at a path of which only the first folder is there.
class ARecordFile : public testing::Test {
protected:
    ARecordFile() {
        const fs::path memory = "/dev/shm";
        std::string pattern = (fs::exists(memory) ? memory : fs::temp_directory_path()) / "records-XXXXXX";
        folder = mkdtemp(pattern.data());
        file = folder / "state" / "store.sqlite";
    }
    ~ARecordFile() override { fs::remove_all(folder); }

    RecordFile opened() const {
        RecordFile records{file, first};
        records.take();
        return records;
    }
    void keep(const Records& records) const { opened().change({}, records); }
    Records kept() const { return opened().read(); }

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
        return whyNot([&] { RecordFile{file, first}.read(); });
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

TEST_F(ARecordFile, BeginsWithTheFirstRecordsAndLeavesNothingBesideIt) {
    EXPECT_EQ(kept(), first);
    EXPECT_THAT(contents(), ElementsAre(Key("store.sqlite")));
}

TEST_F(ARecordFile, KeepsRecordsByteByByteUntilTheyGo) {
    RecordFile records = opened();
    records.change(first, some);
    EXPECT_EQ(records.read(), some);
    records.change({*some.begin()}, {});
    EXPECT_EQ(records.read(), Records(std::next(some.begin()), some.end()));
}

TEST_F(ARecordFile, BelongsToOneProcessAtATime) {
    const RecordFile records = opened();
    EXPECT_EQ(whyNotOpened(), "it is in use by another service");
}

// A process that is killed -------------------------------------------------------------------------------------------

TEST_F(ARecordFile, LosesNothingThatWasKeptWhenItsProcessIsKilled) {
    ASSERT_TRUE(kills([&] {
        RecordFile records = opened();
        records.change(first, some);
        std::raise(SIGKILL);
    }));
    EXPECT_EQ(kept(), some);
}

/// Kills this process before the statement of that number.
WheneverOpened deathBefore(int statement) {
    return beforeEachStatement([left = statement]() mutable {
        if (--left == 0) std::raise(SIGKILL);
    });
}

TEST_F(ARecordFile, IsMadeAnewWhereverTheFirstAttemptWasKilled) {
    int statement = 1;
    for (; kills([&] {
             const auto death = deathBefore(statement);
             opened();
         });
         ++statement) {
        ASSERT_EQ(kept(), first) << "killed before statement " << statement;
        fs::remove_all(file.parent_path());
    }
    EXPECT_GT(statement, 15);
}

TEST_F(ARecordFile, HasAllOfAChangeOrNothingOfItWhereverItsProcessIsKilled) {
    int statement = 1;
    for (bool isKilled = true; isKilled; ++statement) {
        fs::remove_all(file.parent_path());
        keep({});
        isKilled = kills([&] {
            const auto death = deathBefore(statement);
            RecordFile records = opened();
            records.change(first, some);
        });
        ASSERT_EQ(kept(), isKilled ? first : some) << "killed before statement " << statement;
    }
    EXPECT_GT(statement, 10);
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

/// Adds this process's mark to a file that is made by whoever comes first; answers whether it could.
bool leavesItsMark(const std::string& file) {
    try {
        RecordFile records{file, {}};
        records.take();
        records.change({}, {std::to_string(getpid())});
        return true;
    } catch (const StoreFailure&) {
        return false;
    }
}

TEST_F(ARecordFile, LosesNothingThatOneOfTheProcessesKeptThatBeginItAtOnce) {
    const int rounds = std::getenv("DRIVER_MANAGER_LONG") ? 50 : 5;
    for (int round = 0; round < rounds; ++round) {
        fs::remove_all(file.parent_path());
        const int marks = countOfThose(4, [&] { return leavesItsMark(file); });
        ASSERT_GE(marks, 1) << "one of them has it";
        ASSERT_EQ(kept().size(), static_cast<std::size_t>(marks));
    }
}

// What lies in its place ---------------------------------------------------------------------------------------------

TEST_F(ARecordFile, TakesNothingFromWhatIsLeftBesideItsPlace) {
    ASSERT_TRUE(kills([&] {
        RecordFile records = opened();
        records.change({}, some);
        std::raise(SIGKILL);
    }));
    ASSERT_NE(bytes("-wal"), "");
    write(bytes("-wal"), ".new-wal");
    fs::rename(file, file.string() + ".new");
    for (const auto* const ending : {"-shm", "-journal", ".new-shm", ".new-journal"})
        write("left over", ending);
    EXPECT_EQ(kept(), first);
    EXPECT_THAT(contents(), ElementsAre(Key("store.sqlite")));
}

TEST_F(ARecordFile, TakesThePlaceOfNothingElse) {
    fs::create_directories(file);
    EXPECT_EQ(whyNotOpened(), "it cannot be opened");
    fs::remove(file);
    fs::create_symlink(folder / "unmounted.sqlite", file);
    EXPECT_EQ(whyNotOpened(), "it cannot be opened");
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(ARecordFile, ThatIsEmptyIsLeftAlone) {
    write("");
    expectRefusal("it is damaged: it is empty");
}

TEST_F(ARecordFile, ThatIsNoDatabaseIsLeftAlone) {
    write(std::string(10000, 'x'));
    expectRefusal("it is no store of the simulator");
}

TEST_F(ARecordFile, OfAnotherProgramIsLeftAlone) {
    for (const auto* const statement : {"PRAGMA application_id = 7", "CREATE TABLE recipe (name)"}) {
        tamper(statement);
        expectRefusal("it is no store of the simulator");
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
};

class AHarmedRecordFile : public ARecordFile, public testing::WithParamInterface<Harm> {
protected:
    AHarmedRecordFile() { keep(some); }
};

TEST_P(AHarmedRecordFile, IsLeftAlone) {
    tamper(GetParam().statements);
    expectRefusal(GetParam().reason);
}

/// What was changed last stands beside the file, and would be another's to mend.
TEST_P(AHarmedRecordFile, IsLeftAloneWithTheLogOfAProcessThatWasKilled) {
    ASSERT_TRUE(kills([&] {
        tamper(file, GetParam().statements);
        std::raise(SIGKILL);
    }));
    ASSERT_NE(bytes("-wal"), "");
    expectRefusal(GetParam().reason);
}

INSTANTIATE_TEST_SUITE_P(, AHarmedRecordFile, testing::ValuesIn(harms),
                         [](const auto& which) { return which.param.name; });

TEST_F(ARecordFile, ThatIsDamagedIsLeftAloneAndItsLogToo) {
    keep(many());
    ASSERT_TRUE(kills([&] {
        tamper(file, "INSERT INTO record VALUES ('a')");
        std::raise(SIGKILL);
    }));
    std::fstream{file, std::ios::in | std::ios::out | std::ios::binary}.seekp(40 * 4096) << std::string(4096, '\x5a');
    expectRefusal("it is damaged");
}

TEST_F(ARecordFile, WhoseRecordsAreOutOfOrderIsLeftAlone) {
    keep({"/one.app", "/two.app"});
    std::string damaged = bytes();
    damaged.replace(damaged.find("/one.app"), 8, "/zzz.app");
    write(damaged);
    expectRefusal("it is damaged");
}

// Where it cannot be written -----------------------------------------------------------------------------------------

TEST_F(ARecordFile, SaysThatItsFolderCannotBeCreated) {
    std::ofstream{folder / "state"} << "a file";
    EXPECT_EQ(whyNotOpened(), "its folder cannot be created: Not a directory");
}

TEST_F(ARecordFile, ThatCannotBeBegunSaysSoUnderItsOwnName) {
    fs::create_directories(file.parent_path());
    fs::permissions(folder, fs::perms{0755});
    fs::permissions(file.parent_path(), fs::perms{0555});
    {
        const AsNobody nobody;
        EXPECT_EQ(whyNotOpened(), "it cannot be opened");
    }
    EXPECT_THAT(contents(), IsEmpty());
}

TEST_F(ARecordFile, ThatCannotBeWrittenSaysSo) {
    keep(some);
    fs::permissions(folder, fs::perms{0755});
    fs::permissions(file.parent_path(), fs::perms{0555});
    fs::permissions(file, fs::perms{0444});
    const AsNobody nobody;
    expectRefusal("it cannot be written");
}

TEST_F(ARecordFile, ThatDoesNotFitOnTheDiskWhenItBeginsLeavesNothing) {
    {
        const auto disk = smallDisk(1);
        EXPECT_EQ(whyNotOpened(), "the disk is full");
    }
    EXPECT_THAT(contents(), IsEmpty());
    EXPECT_EQ(kept(), first);
}

TEST_F(ARecordFile, OnAFullDiskFailsAndKeepsWhatItHad) {
    {
        const auto disk = smallDisk(100);
        RecordFile records = opened();
        EXPECT_EQ(whyNot([&] { records.change(first, many()); }), "the disk is full");
    }
    EXPECT_EQ(kept(), first);
}

// What others do to it while it is in use ----------------------------------------------------------------------------

class ARecordFileInUse : public ARecordFile {
protected:
    ARecordFileInUse() { records.change({}, some); }

    void expectFailure() {
        EXPECT_EQ(whyNot([&] { records.change(some, {}); }), "it was deleted or replaced while it was in use");
    }

    RecordFile records = opened();
};

TEST_F(ARecordFileInUse, KeepsNoChangeWhereItWasDeletedAndMayBeBegunAnew) {
    fs::remove(file);
    expectFailure();
    EXPECT_EQ(kept(), first);
}

TEST_F(ARecordFileInUse, KeepsNoChangeWhereItsFolderWasDeleted) {
    fs::remove_all(file.parent_path());
    expectFailure();
}

TEST_F(ARecordFileInUse, KeepsNoChangeWhereItsLogWasDeleted) {
    fs::remove(file.string() + "-wal");
    expectFailure();
}

TEST_F(ARecordFileInUse, LeavesTheFileThatTookItsPlaceAsItIs) {
    const Records others{"another"};
    { const RecordFile other{folder / "other.sqlite", others}; }
    fs::rename(folder / "other.sqlite", file);
    expectFailure();
    EXPECT_EQ(kept(), others);
}

} // namespace
} // namespace simulator
