#include "tests/simulator/sample/SampleMac.h"
#include "tests/simulator/store/AsNobody.h"
#include "tests/simulator/store/StoreFile.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <utility>

namespace simulator {
namespace {

using testing::AnyOf;
using testing::HasSubstr;
using testing::StartsWith;

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
    fault.failure = failureWith(8, "It's \"broken\".\n");
    mac.mustDo(mac.machine().orderFault(fault));
    fault.kind = Fault::Kind::delay;
    fault.request.reset();
    fault.milliseconds = 90000;
    mac.mustDo(mac.machine().orderFault(fault));
    return mac.machine().state();
}

class AStore : public StoreFile {
protected:
    static std::string whyNotSaved(Store& store, const State& state) {
        try {
            store.save(state);
        } catch (const StoreFailure& failure) {
            return failure.what();
        }
        return "it was saved";
    }

    void overwrite(std::streamoff position, const std::string& bytes) const {
        std::fstream stream{file, std::ios::in | std::ios::out | std::ios::binary};
        stream.seekp(position);
        stream << bytes;
    }
};

TEST_F(AStore, BeginsWithAMachineOnWhichNothingIsInstalled) {
    const Store store{file};
    EXPECT_EQ(store.load(), State{});
}

TEST_F(AStore, KeepsEverythingOfAState) {
    const State state = aBusyState();
    Store{file}.save(state);
    EXPECT_EQ(Store{file}.load(), state);
}

TEST_F(AStore, ForgetsWhatIsNoLongerThere) {
    Store{file}.save(aBusyState());
    Store{file}.save(State{});
    EXPECT_EQ(Store{file}.load(), State{});
}

TEST_F(AStore, KeepsTheSourceOfAProfileByteByByte) {
    State state;
    state.settings.profile.source = std::string{"bplist00\0\xff\n", 11};
    Store{file}.save(state);
    EXPECT_EQ(Store{file}.load().settings.profile.source, state.settings.profile.source);
}

TEST_F(AStore, LosesNothingThatWasKeptWhenItsProcessIsKilled) {
    const State state = aBusyState();
    const pid_t child = fork();
    if (child == 0) {
        Store store{file};
        store.save(state);
        std::raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(Store{file}.load(), state);
}

TEST_F(AStore, BelongsToOneProcessAtATime) {
    const Store store{file};
    EXPECT_EQ(whyNotOpened(), file.string() + ": it is in use by another service");
}

TEST_F(AStore, OfANewerVersionIsLeftAlone) {
    Store{file}.save(aBusyState());
    tamper("PRAGMA journal_mode = DELETE; PRAGMA user_version = 2");
    const std::string before = bytes();
    EXPECT_EQ(whyNotOpened(), file.string() + ": it was written by a newer simulator (version 2, this one knows 1)");
    EXPECT_TRUE(bytes() == before);
    tamper("PRAGMA user_version = 1");
    EXPECT_EQ(Store{file}.load(), aBusyState());
}

TEST_F(AStore, OfAnotherProgramIsLeftAlone) {
    std::filesystem::create_directories(file.parent_path());
    tamper("CREATE TABLE recipe (name)");
    const std::string before = bytes();
    EXPECT_EQ(whyNotOpened(), file.string() + ": it is no store of the simulator");
    EXPECT_TRUE(bytes() == before);
}

TEST_F(AStore, OfAnotherProgramThatHasKeptNothingYetIsLeftAlone) {
    std::filesystem::create_directories(file.parent_path());
    tamper("PRAGMA application_id = 7");
    const std::string before = bytes();
    EXPECT_EQ(whyNotOpened(), file.string() + ": it is no store of the simulator");
    EXPECT_TRUE(bytes() == before);
}

TEST_F(AStore, ThatIsNoDatabaseIsLeftAlone) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream{file} << std::string(10000, 'x');
    EXPECT_EQ(whyNotOpened(), file.string() + ": it is no store of the simulator");
    EXPECT_EQ(std::filesystem::file_size(file), 10000U);
}

TEST_F(AStore, ThatIsDamagedIsLeftAlone) {
    Store{file}.save(aBusyState());
    const auto size = std::filesystem::file_size(file);
    overwrite(4096, std::string(4096, '\x5a'));
    EXPECT_EQ(whyNotOpened(), file.string() + ": it is damaged");
    EXPECT_EQ(std::filesystem::file_size(file), size);
}

TEST_F(AStore, WhoseRowsAreOutOfOrderIsLeftAlone) {
    State state;
    state.applications = {"/one.app", "/two.app"};
    Store{file}.save(state);
    std::string damaged = bytes();
    damaged.replace(damaged.find("/one.app"), 8, "/zzz.app");
    write(damaged);
    EXPECT_EQ(whyNotOpened(), lineWith("it is damaged"));
    EXPECT_TRUE(bytes() == damaged);
}

TEST_F(AStore, ThatIsCutShortAnywhereIsLeftAlone) {
    Store{file}.save(aBusyState());
    const std::string whole = bytes();
    for (const std::size_t length : {std::size_t{1}, std::size_t{99}, std::size_t{100}, std::size_t{511},
                                     std::size_t{4096}, whole.size() / 2, whole.size() - 4096, whole.size() - 1}) {
        write(whole.substr(0, length));
        EXPECT_THAT(whyNotOpened(), AnyOf(StartsWith(lineWith("it is damaged")),
                                          StartsWith(lineWith("it is no store of the simulator"))));
        EXPECT_TRUE(bytes() == whole.substr(0, length)) << length;
    }
}

TEST_F(AStore, ReadsASwitchThatStandsAtItsDefaultAsOneThatWasNeverMoved) {
    Store{file}.save(State{});
    tamper("INSERT INTO switch VALUES ('authorization', 'asked')");
    EXPECT_EQ(Store{file}.load(), State{});
}

TEST_F(AStore, WithARowThatMakesNoSenseIsLeftAlone) {
    Store{file}.save(aBusyState());
    tamper("UPDATE copy SET state = 'asleep'");
    EXPECT_EQ(whyNotOpened(), file.string() + ": it is damaged: a row makes no sense");
}

TEST_F(AStore, WithoutATableIsLeftAlone) {
    Store{file}.save(aBusyState());
    tamper("DROP TABLE copy");
    const std::string before = bytes();
    EXPECT_EQ(whyNotOpened(), lineWith("it is damaged: no such table: copy"));
    EXPECT_TRUE(bytes() == before);
}

TEST_F(AStore, SaysThatItsFolderCannotBeCreated) {
    std::ofstream{folder / "state"} << "a file";
    EXPECT_THAT(whyNotOpened(), HasSubstr("store.sqlite: its folder cannot be created: "));
}

/// Counts the statements that are run on every database that is opened while it lives.
class StatementCount {
public:
    StatementCount() {
        count = 0;
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(&trace));
    }
    ~StatementCount() { sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(&trace)); }
    StatementCount(const StatementCount&) = delete;
    StatementCount& operator=(const StatementCount&) = delete;

    static int take() { return std::exchange(count, 0); }

private:
    static int trace(sqlite3* database, char**, const sqlite3_api_routines*) {
        return sqlite3_trace_v2(database, SQLITE_TRACE_STMT, &add, nullptr);
    }
    static int add(unsigned, void*, void*, void*) {
        ++count;
        return 0;
    }

    static inline int count = 0;
};

TEST_F(AStore, WritesWhatChangedAndNoMoreHoweverManyCopiesItHas) {
    const StatementCount statements;
    Store store{file};
    State state = aBusyState();
    store.save(state);
    const Copy sample = state.copies.begin()->second;
    for (int i = 0; i < 10000; ++i) {
        statements.take();
        const std::int64_t number = ++state.lastNumber;
        state.copies.emplace(number, sample).first->second.number = number;
        store.save(state, {number});
        ASSERT_EQ(statements.take(), 4) << "begin, the copy, the last number, commit";
    }
    store.save(state, {});
    EXPECT_EQ(statements.take(), 0) << "nothing changed";
    EXPECT_EQ(store.load(), state);
}

TEST_F(AStore, ThatCannotBeWrittenSaysSo) {
    Store{file}.save(aBusyState());
    std::filesystem::permissions(folder, std::filesystem::perms{0555});
    std::filesystem::permissions(file.parent_path(), std::filesystem::perms{0555});
    std::filesystem::permissions(file, std::filesystem::perms{0444});
    {
        const AsNobody nobody;
        EXPECT_EQ(whyNotOpened(), file.string() + ": it cannot be written");
    }
    std::filesystem::permissions(folder, std::filesystem::perms{0755});
    std::filesystem::permissions(file.parent_path(), std::filesystem::perms{0755});
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

/// A state that takes a megabyte.
State aLargeState() {
    State state = aBusyState();
    for (int i = 0; i < 2000; ++i)
        state.applications.insert("/" + std::string(500, 'x') + std::to_string(i));
    return state;
}

/// No database that is opened while it lives grows beyond a hundred pages, as on a disk that is nearly full.
class NearlyFullDisk {
public:
    NearlyFullDisk() { sqlite3_auto_extension(reinterpret_cast<void (*)()>(&limit)); }
    ~NearlyFullDisk() { sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(&limit)); }
    NearlyFullDisk(const NearlyFullDisk&) = delete;
    NearlyFullDisk& operator=(const NearlyFullDisk&) = delete;

private:
    static int limit(sqlite3* database, char**, const sqlite3_api_routines*) {
        return sqlite3_exec(database, "PRAGMA max_page_count = 100", nullptr, nullptr, nullptr);
    }
};

TEST_F(AStore, OnAFullDiskFailsAndKeepsWhatItHad) {
    const State before = aBusyState();
    {
        const NearlyFullDisk disk;
        Store store{file};
        store.save(before);
        EXPECT_EQ(whyNotSaved(store, aLargeState()), file.string() + ": the disk is full");
    }
    EXPECT_EQ(Store{file}.load(), before);
}

TEST_F(AStore, ThatCannotGrowFailsAndKeepsWhatItHad) {
    const State before = aBusyState();
    const State after = aLargeState();
    {
        Store store{file};
        store.save(before);
        const FileSizeLimit limit{100000};
        EXPECT_EQ(whyNotSaved(store, after), file.string() + ": the disk cannot be read or written");
    }
    EXPECT_EQ(Store{file}.load(), before);
}

} // namespace
} // namespace simulator
