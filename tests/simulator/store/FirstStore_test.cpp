// How a store comes to be where there is none.

#include "tests/simulator/store/AsNobody.h"
#include "tests/simulator/store/StoreFile.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <functional>

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AFirstStore : public StoreFile {
protected:
    /// What becomes of a process that does this and ends with what it answers.
    static int inAProcess(const std::function<int()>& deed) {
        const pid_t child = fork();
        if (child == 0) _exit(deed());
        return statusOf(child);
    }

    static int statusOf(pid_t child) {
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        return status;
    }
};

TEST_F(AFirstStore, LeavesNothingBesideIt) {
    EXPECT_EQ(Store{file}.load(), State{});
    EXPECT_THAT(names(), ElementsAre("store.sqlite"));
}

TEST_F(AFirstStore, TakesNothingFromWhatIsLeftBesideItsPlace) {
    State state;
    state.clock = 7;
    ASSERT_TRUE(WIFSIGNALED(inAProcess([&] {
        Store store{file};
        store.save(state);
        return std::raise(SIGKILL);
    })));
    ASSERT_THAT(bytes("-wal"), testing::Not(IsEmpty()));
    write(bytes("-wal"), ".new-wal");
    std::filesystem::rename(file, file.string() + ".new");
    for (const auto* const ending : {"-shm", "-journal", ".new-shm", ".new-journal"})
        write("left over", ending);
    EXPECT_EQ(Store{file}.load(), State{});
    EXPECT_THAT(names(), ElementsAre("store.sqlite"));
}

TEST_F(AFirstStore, IsNoneThatIsEmpty) {
    write("");
    EXPECT_EQ(whyNotOpened(), lineWith("it is damaged: it is empty"));
    EXPECT_EQ(bytes(), "");
    EXPECT_THAT(names(), ElementsAre("store.sqlite"));
}

TEST_F(AFirstStore, TakesThePlaceOfNothingElse) {
    std::filesystem::create_directories(file);
    EXPECT_EQ(whyNotOpened(), lineWith("it cannot be opened"));
    std::filesystem::remove(file);
    std::filesystem::create_symlink(folder / "unmounted.sqlite", file);
    EXPECT_EQ(whyNotOpened(), lineWith("it cannot be opened"));
    EXPECT_TRUE(std::filesystem::is_symlink(file));
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(AFirstStore, ThatCannotBeWrittenSaysSoUnderItsOwnName) {
    std::filesystem::create_directories(file.parent_path());
    std::filesystem::permissions(folder, std::filesystem::perms{0755});
    std::filesystem::permissions(file.parent_path(), std::filesystem::perms{0555});
    {
        const AsNobody nobody;
        EXPECT_EQ(whyNotOpened(), lineWith("it cannot be opened"));
    }
    EXPECT_THAT(names(), IsEmpty());
}

/// Every database that is opened while it lives has room for that many pages.
class SmallDisk {
public:
    explicit SmallDisk(int pages) {
        room = pages;
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(&limit));
    }
    ~SmallDisk() { sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(&limit)); }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    static int limit(sqlite3* database, char**, const sqlite3_api_routines*) {
        const std::string pragma = "PRAGMA max_page_count = " + std::to_string(room);
        return sqlite3_exec(database, pragma.c_str(), nullptr, nullptr, nullptr);
    }

    static inline int room = 0;
};

TEST_F(AFirstStore, ThatDoesNotFitOnTheDiskSaysSoUnderItsOwnNameAndLeavesNothing) {
    {
        const SmallDisk disk{3};
        EXPECT_EQ(whyNotOpened(), lineWith("the disk is full"));
    }
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_EQ(whyNotOpened(), "it was opened");
}

/// Kills this process before the statement of that number that it has SQLite run.
class DeathBefore {
public:
    explicit DeathBefore(int statement) {
        left = statement;
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(&trace));
    }
    ~DeathBefore() { sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(&trace)); }
    DeathBefore(const DeathBefore&) = delete;
    DeathBefore& operator=(const DeathBefore&) = delete;

private:
    static int trace(sqlite3* database, char**, const sqlite3_api_routines*) {
        return sqlite3_trace_v2(database, SQLITE_TRACE_STMT, &count, nullptr);
    }
    static int count(unsigned, void*, void*, void*) { return --left == 0 ? std::raise(SIGKILL) : 0; }

    static inline int left = 0;
};

TEST_F(AFirstStore, IsMadeAnewWhereverTheFirstAttemptWasKilled) {
    int kills = 0;
    for (bool isKilled = true; isKilled; kills += isKilled ? 1 : 0) {
        std::filesystem::remove_all(file.parent_path());
        isKilled = WIFSIGNALED(inAProcess([&] {
            const DeathBefore death{kills + 1};
            const Store store{file};
            return 0;
        }));
        ASSERT_EQ(whyNotOpened(), "it was opened") << "killed before statement " << kills + 1;
        ASSERT_EQ(Store{file}.load(), State{});
    }
    EXPECT_GT(kills, 20);
}

/// Adds this process's mark to a store that is made by whoever comes first; answers whether it could.
bool leavesItsMark(const std::string& file) {
    try {
        Store store{file};
        State state = store.load();
        state.applications.insert(std::to_string(getpid()));
        store.save(state);
        return true;
    } catch (const StoreFailure&) {
        return false;
    }
}

/// Processes that wait for each other, and then do it all at once. They end with 0 where it was done.
std::vector<pid_t> together(int count, const std::function<bool()>& deed) {
    std::array<int, 2> gate{};
    EXPECT_EQ(pipe(gate.data()), 0);
    std::vector<pid_t> processes;
    for (int i = 0; i < count; ++i) {
        processes.push_back(fork());
        if (processes.back() != 0) continue;
        close(gate[1]);
        char none = 0;
        const bool isOpen = read(gate[0], &none, 1) == 0;
        _exit(isOpen && deed() ? 0 : 1);
    }
    close(gate[0]);
    close(gate[1]);
    return processes;
}

TEST_F(AFirstStore, OfServicesThatBeginAtOnceLosesNothingThatOneOfThemKept) {
    for (int round = 0; round < 50; ++round) {
        std::filesystem::remove_all(file.parent_path());
        std::size_t marks = 0;
        for (const pid_t service : together(4, [&] { return leavesItsMark(file); }))
            marks += statusOf(service) == 0 ? 1U : 0U;
        ASSERT_GE(marks, 1U) << "one of them has it";
        ASSERT_EQ(Store{file}.load().applications.size(), marks);
    }
}

} // namespace
} // namespace simulator
