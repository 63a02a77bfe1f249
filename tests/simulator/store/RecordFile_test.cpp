#include "simulator/store/RecordFile.h"

#include "tests/simulator/store/StoreFile.h"

#include <gmock/gmock.h>

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <fstream>
#include <iterator>
#include <map>

namespace simulator {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;
using testing::SizeIs;

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

void die() {
    std::raise(SIGKILL);
}

void write(const fs::path& file, const std::string& bytes) {
    std::ofstream{file, std::ios::binary} << bytes;
}

/// Whether a process that does this is killed by it.
bool kills(const std::function<void()>& deed) {
    const pid_t child = fork();
    if (child == 0) {
        [&]() noexcept { deed(); }(); // what it throws is nothing for the test in this process
        _exit(0);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

/// Whether a process that is killed before its statement of that number gets so far in this.
bool killsBefore(int statement, const std::function<void()>& deed) {
    return kills([&] {
        const auto death = beforeEachStatement([left = statement]() mutable {
            if (--left == 0) die();
        });
        deed();
    });
}

class ARecordFile : public AStoreFile {
protected:
    RecordFile opened() const {
        RecordFile records{file, first};
        records.take();
        return records;
    }
    void keep(const Records& records) const { opened().change(first, records); }
    Records kept() const { return opened().read(); }

    std::string whyNotOpened() const {
        return whyNot([&] { RecordFile{file, first}.read(); });
    }

    /// Of the store, or of the file beside it whose name ends so.
    std::string bytes(const std::string& ending = {}) const {
        std::ifstream stream{file.string() + ending, std::ios::binary};
        return {std::istreambuf_iterator<char>{stream}, {}};
    }
    /// What lies in the store's folder, by name.
    std::map<std::string, std::string> contents() const {
        std::map<std::string, std::string> found;
        for (const auto& entry : fs::directory_iterator{file.parent_path()}) {
            const std::string name = entry.path().filename();
            const std::string ending = name.substr(file.filename().string().size());
            found[name] = entry.is_directory() ? "a folder" : bytes(ending);
        }
        return found;
    }

    void expectRefusal(const std::string& reason) const {
        const auto before = contents();
        EXPECT_EQ(whyNotOpened(), reason);
        EXPECT_TRUE(contents() == before) << "changed where " << reason;
    }
    void forbidWriting() const {
        fs::permissions(folder, fs::perms{0755});
        fs::permissions(file.parent_path(), fs::perms{0555});
    }
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

TEST_F(ARecordFile, BelongsToTheFirstOfTwoServicesHoweverFarThatIs) {
    std::vector<std::string> answers;
    bool isAsking = false;
    const auto another = beforeEachStatement([&] {
        if (std::exchange(isAsking, true)) return;
        answers.push_back(whyNotOpened());
        isAsking = false;
    });
    opened().change(first, some);
    EXPECT_THAT(answers, AllOf(SizeIs(testing::Gt(15)), Each("it is in use by another service")));
}

// A process that is killed -------------------------------------------------------------------------------------------

TEST_F(ARecordFile, LosesNothingThatWasKeptWhenItsProcessIsKilled) {
    ASSERT_TRUE(kills([&] {
        RecordFile records = opened();
        records.change(first, some);
        die();
    }));
    EXPECT_EQ(kept(), some);
}

TEST_F(ARecordFile, IsMadeAnewWhereverTheFirstAttemptWasKilled) {
    int statement = 1;
    for (; killsBefore(statement, [&] { opened(); }); ++statement) {
        ASSERT_EQ(kept(), first) << "killed before statement " << statement;
        fs::remove_all(file.parent_path());
    }
    EXPECT_GT(statement, 15);
}

TEST_F(ARecordFile, HasAllOfAChangeOrNothingOfItWhereverItsProcessIsKilled) {
    int statement = 1;
    for (bool isKilled = true; isKilled; ++statement) {
        fs::remove_all(file.parent_path());
        opened();
        isKilled = killsBefore(statement, [&] { keep(some); });
        ASSERT_EQ(kept(), isKilled ? first : some) << "killed before statement " << statement;
    }
    EXPECT_GT(statement, 10);
}

// What lies in its place ---------------------------------------------------------------------------------------------

TEST_F(ARecordFile, TakesNothingFromWhatIsLeftBesideItsPlace) {
    ASSERT_TRUE(kills([&] {
        RecordFile records = opened();
        records.change({}, some);
        die();
    }));
    ASSERT_NE(bytes("-wal"), "");
    write(file.string() + ".new-wal", bytes("-wal"));
    fs::rename(file, file.string() + ".new");
    for (const auto* const ending : {"-shm", "-journal", ".new-shm", ".new-journal"})
        write(file.string() + ending, "left over");
    EXPECT_EQ(kept(), first);
    EXPECT_THAT(contents(), ElementsAre(Key("store.sqlite")));
}

/// What lies in a store's place, and why it is none.
struct Stranger {
    const char* reason;
    void (*put)(const fs::path& file);
};

constexpr std::array strangers{
    Stranger{"it cannot be opened", [](const fs::path& file) { fs::create_directory(file); }},
    Stranger{"it cannot be opened", [](const fs::path& file) { fs::create_symlink("unmounted.sqlite", file); }},
    Stranger{"it is damaged: it is empty", [](const fs::path& file) { write(file, ""); }},
    Stranger{"it is no store of the simulator", [](const fs::path& file) { write(file, std::string(10000, 'x')); }},
};

TEST_F(ARecordFile, LeavesAloneWhatIsNone) {
    for (const auto& [reason, put] : strangers) {
        fs::remove_all(file.parent_path());
        fs::create_directories(file.parent_path());
        put(file);
        expectRefusal(reason);
    }
}

/// What was done to a store before it is opened.
struct Harm {
    const char* statements;
    const char* reason;
};

constexpr std::array harms{
    Harm{"PRAGMA user_version = 3", "it was written by a newer simulator (version 3, this one knows 2)"},
    Harm{"PRAGMA user_version = 1", "it was written by an older simulator; to begin anew, delete it"},
    Harm{"PRAGMA application_id = 7", "it is no store of the simulator"},
    Harm{"DROP TABLE record", "it is damaged: no such table: record"},
};

/// What a process that was killed changed last stands beside the file, and would be another's to mend.
TEST_F(ARecordFile, ThatWasHarmedIsLeftAloneAndItsLogToo) {
    for (const auto& [statements, reason] : harms) {
        for (const bool isKilled : {false, true}) {
            fs::remove_all(file.parent_path());
            keep(some);
            const auto harm = [&, text = statements] { tamper(text, [&] { isKilled ? die() : void(); }); };
            ASSERT_EQ(kills(harm), isKilled);
            ASSERT_EQ(bytes("-wal").empty(), !isKilled);
            expectRefusal(reason);
        }
    }
}

TEST_F(ARecordFile, ThatIsDamagedIsLeftAloneAndItsLogToo) {
    keep(many());
    ASSERT_TRUE(kills([&] { tamper("INSERT INTO record VALUES ('a')", die); }));
    std::fstream{file, std::ios::in | std::ios::out | std::ios::binary}.seekp(163'840) << std::string(4096, '\x5a');
    expectRefusal("it is damaged");
}

TEST_F(ARecordFile, WhoseRecordsAreOutOfOrderOrCutShortIsLeftAlone) {
    keep({"/one.app", "/two.app"});
    const std::string sound = bytes();
    write(file, std::string{sound}.replace(sound.find("/one.app"), 8, "/zzz.app"));
    expectRefusal("it is damaged");
    write(file, sound.substr(0, sound.size() / 2));
    expectRefusal("it is damaged");
    write(file, sound.substr(0, 99));
    expectRefusal("it is damaged");
}

// Where it cannot be written -----------------------------------------------------------------------------------------

TEST_F(ARecordFile, SaysThatItsFolderCannotBeCreated) {
    write(folder / "state", "a file");
    EXPECT_EQ(whyNotOpened(), "its folder cannot be created: Not a directory");
}

TEST_F(ARecordFile, ThatCannotBeBegunSaysSoUnderItsOwnName) {
    fs::create_directories(file.parent_path());
    forbidWriting();
    {
        const AsNobody nobody;
        EXPECT_EQ(whyNotOpened(), "it cannot be opened");
    }
    EXPECT_THAT(contents(), IsEmpty());
}

TEST_F(ARecordFile, ThatCannotBeWrittenSaysSo) {
    keep(some);
    forbidWriting();
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

/// What may be done to a store in use, and what is found there by the next service.
struct Deed {
    const char* name;
    void (*run)(const fs::path& file);
    Records found;
};

void PrintTo(const Deed& deed, std::ostream* out) {
    *out << deed.name;
}

void replace(const fs::path& file) {
    const fs::path other = file.parent_path() / "other.sqlite";
    { const RecordFile records{other, {"another"}}; }
    fs::rename(other, file);
}

const std::array deeds{
    Deed{"Deleted", [](const fs::path& file) { fs::remove(file); }, first},
    Deed{"DeletedWithItsFolder", [](const fs::path& file) { fs::remove_all(file.parent_path()); }, first},
    Deed{"DeletedInItsLog", [](const fs::path& file) { fs::remove(file.string() + "-wal"); }, first},
    Deed{"Replaced", replace, {"another"}},
};

class ARecordFileInUse : public ARecordFile, public testing::WithParamInterface<Deed> {};

TEST_P(ARecordFileInUse, KeepsNoChangeAndLeavesItsPlaceToTheNext) {
    {
        RecordFile records = opened();
        records.change({}, some);
        GetParam().run(file);
        EXPECT_EQ(whyNot([&] { records.change(some, {}); }), "it was deleted or replaced while it was in use");
    }
    EXPECT_EQ(kept(), GetParam().found);
}

INSTANTIATE_TEST_SUITE_P(, ARecordFileInUse, testing::ValuesIn(deeds),
                         [](const auto& which) { return which.param.name; });

} // namespace
} // namespace simulator
