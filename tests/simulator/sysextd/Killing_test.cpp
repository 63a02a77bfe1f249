// The service is killed again and again while many have it do something, and comes back each time.

#include "tests/simulator/support/Program.h"
#include "tests/simulator/support/Until.h"
#include "tests/simulator/sysextd/Load.h"
#include "tests/simulator/sysextd/TheService.h"

#include <QDBusConnectionInterface>
#include <QFile>

#include <sqlite3.h>

#include <csignal>
#include <thread>

namespace simulator::tests {

namespace {

constexpr int lives = 250;

/// Whether a process is neither running nor waiting: stopped, or gone.
bool isStopped(qint64 process) {
    QFile status{QString{"/proc/%1/stat"}.arg(process)};
    if (!status.open(QIODevice::ReadOnly)) return true;
    const QByteArray line = status.readAll();
    return !QByteArray{"RSD"}.contains(line.at(line.lastIndexOf(')') + 2));
}

/// What SQLite finds wrong with a file; "ok" for nothing.
std::string integrityOf(const QString& file) {
    sqlite3* handle = nullptr;
    const auto keep = [](void* verdict, int, char** values, char**) {
        *static_cast<std::string*>(verdict) += values[0];
        return 0;
    };
    std::string verdict;
    if (sqlite3_open(file.toUtf8(), &handle) != SQLITE_OK ||
        sqlite3_exec(handle, "PRAGMA integrity_check", keep, &verdict, nullptr) != SQLITE_OK) {
        verdict = sqlite3_errmsg(handle);
    }
    sqlite3_close(handle);
    return verdict;
}

class TheServiceUnderLoad : public TheService, public testing::WithParamInterface<unsigned> {
protected:
    TheServiceUnderLoad() {
        must(control().SetSwitch("authorization", "granted"));
        std::vector<QDBusConnection> buses;
        for (std::size_t i = 0; i < Load::connections; ++i)
            buses.push_back(bus().connect());
        load = std::make_unique<Load>(GetParam(), program(), environment(), buses);
    }

    int pick(int below) { return std::uniform_int_distribution<int>{0, below - 1}(random_); }

    /// Kills the service wherever it is. What it leaves on the disk is looked at before anyone can start it again.
    void kill() {
        const QString owner = connection().interface()->serviceOwner(serviceName);
        const qint64 process = connection().interface()->servicePid(owner).value();
        ASSERT_TRUE(sendSignal(process, SIGSTOP));
        while (!isStopped(process))
            std::this_thread::yield();
        const QString image = copyOfTheStore();
        ASSERT_TRUE(sendSignal(process, SIGKILL));
        ASSERT_TRUE(until([&] { return connection().interface()->serviceOwner(serviceName).value() != owner; }));
        ASSERT_EQ(integrityOf(image), "ok");
        ++kills;
    }

    /// Has a service there that may still be reading its store.
    void startAgain() {
        load->knock();
        ASSERT_TRUE(until([&] { return connection().interface()->isServiceRegistered(serviceName).value(); }));
    }

    void live() {
        if (pick(4) == 0) {
            must(control().Restart());
            load->restarted();
        }
        load->begin();
        ASSERT_TRUE(load->hears(pick(20)));
        ASSERT_NO_FATAL_FAILURE(kill());
        if (pick(10) == 0) {
            ASSERT_NO_FATAL_FAILURE(startAgain());
            ASSERT_NO_FATAL_FAILURE(kill());
        }
        load->knock();
        ASSERT_TRUE(load->comesToRest()) << load->account();
        load->compare();
    }

    std::unique_ptr<Load> load;
    int kills = 0;

private:
    QString copyOfTheStore() const {
        const QString copy = stateFolder() + "/image.sqlite";
        for (const auto* const part : {"", "-wal"}) {
            QFile::remove(copy + part);
            QFile::copy(storeFile() + part, copy + part);
        }
        return copy;
    }

    std::mt19937 random_{GetParam()};
};

TEST_P(TheServiceUnderLoad, LosesNothingThatWasAnsweredWheneverItIsKilled) {
    while (kills < lives && !HasFailure())
        live();
    EXPECT_GT(load->answers(), 1000U);
}

INSTANTIATE_TEST_SUITE_P(WithSeed, TheServiceUnderLoad, testing::Values(1U, 2U, 3U, 4U));

} // namespace

} // namespace simulator::tests
