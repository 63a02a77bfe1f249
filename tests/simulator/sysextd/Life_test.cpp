// How the service comes, goes, and dies.

#include "tests/simulator/application/SampleBundle.h"
#include "tests/simulator/support/Printing.h"
#include "tests/simulator/support/Program.h"
#include "tests/simulator/support/Until.h"
#include "tests/simulator/sysextd/TheService.h"

#include <QDBusConnectionInterface>
#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <csignal>
#include <optional>

namespace simulator::tests {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TheServicesLife : public TheService {};

TEST_F(TheServicesLife, LosesNothingThatWasAnsweredWhenItIsKilled) {
    must(control().Install(camera, "1.0", "1", "enabled"));
    must(control().SetSwitch("upgrade", "asked"));
    signalService(SIGKILL);
    ASSERT_TRUE(serviceIsGone());
    EXPECT_THAT(copies(camera), ElementsAre("1 enabled"));
    EXPECT_EQ(must(control().ListSwitches()).value().last().value, "asked");
}

TEST_F(TheServicesLife, EndsInTheMiddleOfARequestAsOrderedAndBeginsAnew) {
    must(control().OrderFault("activation", "crash", {}, 0, {}, 0));
    const auto asker = application();
    asker->tell(QString{"submit a activation "} + camera);
    ASSERT_TRUE(serviceIsGone());
    EXPECT_THAT(copies(camera), IsEmpty());
    asker->tell(QString{"submit b activation "} + camera);
    EXPECT_TRUE(asker->hears("b needs approval"));
    EXPECT_EQ(asker->lines(), QStringList{"b needs approval"});
}

/// Another start of the service, with the same store, on a bus that starts nothing by itself.
class AStartOfTheService : public TheService {
protected:
    AStartOfTheService() {
        signalService(SIGTERM);
        EXPECT_TRUE(serviceIsGone());
    }

    std::unique_ptr<Program> start() { return std::make_unique<Program>(SYSEXTD, QStringList{}, ownEnvironment()); }
    /// The same, in a shell that first does something to itself.
    std::unique_ptr<Program> startAfter(const QString& commands) {
        return std::make_unique<Program>("/bin/sh", QStringList{"-c", commands + "; exec \"$0\"", SYSEXTD},
                                         ownEnvironment());
    }

    QProcessEnvironment ownEnvironment() const {
        QProcessEnvironment environment = own_.environment();
        environment.insert("XDG_STATE_HOME", stateFolder());
        return environment;
    }

    /// Its one line is that reason, and the store is as it was.
    void expectRefusal(const QString& reason) {
        const QByteArray before = contentsOf(storeFile());
        const auto service = start();
        ASSERT_TRUE(service->ended());
        EXPECT_EQ(service->exitCode(), 1);
        EXPECT_EQ(QString{service->errors()}, "sysextd: " + storeFile() + ": " + reason + '\n');
        EXPECT_EQ(contentsOf(storeFile()), before);
    }

    bool isThere() {
        return until([&] { return connection_.interface()->isServiceRegistered(serviceName).value(); });
    }

    static QByteArray contentsOf(const QString& path) {
        QFile file{path};
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray{};
    }

    void tamper(const char* statement) {
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open(storeFile().toUtf8(), &handle), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(handle, statement, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(handle);
    }

    ::tests::PrivateBus own_;
    QDBusConnection connection_ = own_.connect();
    QDBusServiceWatcher watcher_{serviceName, connection_};
};

TEST_F(AStartOfTheService, EndsCleanlyWhenItIsTold) {
    for (const int signal : {SIGTERM, SIGINT}) {
        const auto service = start();
        ASSERT_TRUE(isThere());
        ASSERT_TRUE(service->signal(signal));
        ASSERT_TRUE(service->ended());
        EXPECT_EQ(service->exitCode(), 0);
        EXPECT_EQ(service->errors(), "");
    }
}

TEST_F(AStartOfTheService, EndsCleanlyWhenTheBusGoesAway) {
    const auto service = start();
    ASSERT_TRUE(isThere());
    own_.stop();
    ASSERT_TRUE(service->ended());
    EXPECT_EQ(service->exitCode(), 0);
    EXPECT_EQ(service->errors(), "");
}

TEST_F(AStartOfTheService, LeavesTheStoreToAnotherThatHasIt) {
    const auto first = start();
    ASSERT_TRUE(isThere());
    const auto second = start();
    ASSERT_TRUE(second->ended());
    EXPECT_EQ(second->exitCode(), 1);
    EXPECT_EQ(QString{second->errors()}, "sysextd: " + storeFile() + ": it is in use by another service\n");
}

TEST_F(AStartOfTheService, LeavesADamagedStoreAlone) {
    QFile file{storeFile()};
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.seek(4096);
    file.write(QByteArray(4096, 'x'));
    file.close();
    expectRefusal("it is damaged");
}

TEST_F(AStartOfTheService, BeginsNothingAnewWhereItsStoreIsEmpty) {
    ASSERT_TRUE(QFile::resize(storeFile(), 0));
    expectRefusal("it is damaged: it is empty");
}

TEST_F(AStartOfTheService, LeavesAStoreOfANewerVersionAlone) {
    tamper("PRAGMA user_version = 3");
    expectRefusal("it was written by a newer simulator (version 3, this one knows 2)");
}

TEST_F(AStartOfTheService, LeavesAFileOfAnotherProgramAlone) {
    tamper("PRAGMA application_id = 7");
    expectRefusal("it is no store of the simulator");
}

TEST_F(AStartOfTheService, SaysThatTheFolderOfItsStoreCannotBeCreated) {
    const QString inTheWay = stateFolder() + "/file";
    ASSERT_TRUE(QFile{inTheWay}.open(QIODevice::WriteOnly));
    QProcessEnvironment environment = own_.environment();
    environment.insert("XDG_STATE_HOME", inTheWay);
    Program service{SYSEXTD, QStringList{}, environment};
    ASSERT_TRUE(service.ended());
    EXPECT_EQ(service.exitCode(), 1);
    EXPECT_EQ(QString{service.errors()}, "sysextd: " + inTheWay +
                                             "/kelvra-simulator/store.sqlite: its folder cannot be created: "
                                             "Not a directory\n");
    EXPECT_TRUE(QFileInfo{inTheWay}.isFile());
}

TEST_F(AStartOfTheService, GivesNoAnswerWhenItsStoreCannotGrowAndKeepsWhatItHad) {
    const auto service = startAfter("trap '' XFSZ; ulimit -f 200");
    ASSERT_TRUE(isThere());
    Control control{serviceName, objectPath, connection_};
    must(control.Install(camera, "1.0", "1", "enabled"));
    int answered = 0;
    const auto installAnother = [&] {
        auto reply = control.Install(camera, QString(4000, 'x'), QString::number(answered), "uninstalling");
        reply.waitForFinished();
        return reply;
    };
    auto last = installAnother();
    for (; !last.isError() && answered < 1000; last = installAnother())
        ++answered;
    ASSERT_TRUE(service->ended());
    EXPECT_EQ(last.error().type(), QDBusError::NoReply);
    EXPECT_EQ(service->exitCode(), 1);
    EXPECT_EQ(QString{service->errors()}, "sysextd: " + storeFile() + ": the disk cannot be read or written\n");
    const auto again = start();
    ASSERT_TRUE(isThere());
    EXPECT_EQ(must(control.ListCopies()).value().size(), answered + 1);
}

/// What XDG_STATE_HOME is; nothing: it is not set.
class AStateFolder : public AStartOfTheService, public testing::WithParamInterface<std::optional<QString>> {};

TEST_P(AStateFolder, ThatIsNoneIsTheOneInTheHomeFolder) {
    const QTemporaryDir home;
    QProcessEnvironment environment = own_.environment();
    environment.insert("HOME", home.path());
    environment.remove("XDG_STATE_HOME");
    if (GetParam()) environment.insert("XDG_STATE_HOME", *GetParam());
    const Program service{SYSEXTD, QStringList{}, environment};
    ASSERT_TRUE(isThere());
    EXPECT_TRUE(QFile::exists(home.filePath(".local/state/kelvra-simulator/store.sqlite")));
}

INSTANTIATE_TEST_SUITE_P(, AStateFolder, testing::Values(std::nullopt, QString{}, QString{"state"}));

} // namespace

} // namespace simulator::tests
