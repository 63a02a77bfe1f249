// A store whose last process was killed: what it changed last stands beside it, and is another's to mend.

#include "tests/simulator/sample/SampleMac.h"
#include "tests/simulator/store/StoreFile.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>

namespace simulator {
namespace {

struct Killed {
    const char* name;
    /// What the last process did before it was killed.
    const char* statements;
    const char* reason;
};

void PrintTo(const Killed& killed, std::ostream* out) {
    *out << killed.name;
}

class AKilledStore : public StoreFile {
protected:
    AKilledStore() {
        SampleMac mac;
        mac.install("2004", "enabled");
        Store{file}.save(mac.machine().state());
    }

    /// A process that does this to the file and is killed.
    void killAfter(const std::string& statements) const {
        const pid_t child = fork();
        if (child == 0) {
            tamperOpenly(statements);
            std::raise(SIGKILL);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));
    }

    void expectRefusal(const std::string& reason, const std::string& log) const {
        const std::string before = bytes();
        const std::string logBefore = bytes(log);
        const auto namesBefore = names();
        ASSERT_FALSE(logBefore.empty());
        EXPECT_EQ(whyNotOpened(), lineWith(reason));
        EXPECT_TRUE(bytes() == before);
        EXPECT_TRUE(bytes(log) == logBefore);
        EXPECT_EQ(names(), namesBefore);
    }

private:
    /// Leaves the file open.
    void tamperOpenly(const std::string& statements) const {
        sqlite3* handle = nullptr;
        if (sqlite3_open(file.c_str(), &handle) != SQLITE_OK) _exit(1);
        if (sqlite3_exec(handle, statements.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) _exit(1);
    }
};

class AKilledStoreThatIsRefused : public AKilledStore, public testing::WithParamInterface<Killed> {};

TEST_P(AKilledStoreThatIsRefused, IsAsItWasAndItsLogToo) {
    killAfter(GetParam().statements);
    expectRefusal(GetParam().reason, "-wal");
}

const std::vector<Killed> everyRefusal{
    {"OfANewerVersionByItsLog", "PRAGMA user_version = 2",
     "it was written by a newer simulator (version 2, this one knows 1)"},
    {"OfANewerVersionByItself",
     "PRAGMA user_version = 2; PRAGMA wal_checkpoint(TRUNCATE); INSERT INTO approval VALUES ('a', 'b')",
     "it was written by a newer simulator (version 2, this one knows 1)"},
    {"OfAnotherProgram", "PRAGMA application_id = 7", "it is no store of the simulator"},
    {"WithARowThatMakesNoSense", "UPDATE copy SET state = 'asleep'", "it is damaged: a row makes no sense"},
};

INSTANTIATE_TEST_SUITE_P(Every, AKilledStoreThatIsRefused, testing::ValuesIn(everyRefusal),
                         [](const auto& which) { return which.param.name; });

TEST_F(AKilledStore, ThatIsDamagedIsAsItWasAndItsLogToo) {
    killAfter("INSERT INTO approval VALUES ('a', 'b')");
    std::fstream stream{file, std::ios::in | std::ios::out | std::ios::binary};
    stream.seekp(4096) << std::string(4096, '\x5a');
    stream.close();
    expectRefusal("it is damaged", "-wal");
}

TEST_F(AKilledStore, OfANewerVersionWithATransactionHalfDoneIsAsItWasAndItsJournalToo) {
    killAfter("PRAGMA journal_mode = DELETE; PRAGMA user_version = 2; PRAGMA cache_size = 1; BEGIN;"
              "WITH RECURSIVE count(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM count WHERE n < 20000)"
              "INSERT INTO application SELECT n FROM count");
    expectRefusal("it was written by a newer simulator (version 2, this one knows 1)", "-journal");
}

TEST_F(AKilledStore, IsMendedWhereItIsOfThisVersion) {
    killAfter("INSERT INTO approval VALUES ('a', 'b')");
    EXPECT_EQ(Store{file}.load().approvals.count({"a", "b"}), 1U);
}

} // namespace
} // namespace simulator
