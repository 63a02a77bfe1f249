// How the service comes, goes, and dies.

#include "tests/simulator/application/SampleBundle.h"
#include "tests/simulator/support/Printing.h"
#include "tests/simulator/support/Program.h"
#include "tests/simulator/support/Until.h"
#include "tests/simulator/sysextd/TheService.h"

#include <QDBusConnectionInterface>
#include <QFile>

#include <csignal>

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

    std::unique_ptr<Program> start() {
        QProcessEnvironment environment = own_.environment();
        environment.insert("XDG_STATE_HOME", stateFolder());
        return std::make_unique<Program>(SYSEXTD, QStringList{}, environment);
    }

    bool isThere() {
        return until([&] { return connection_.interface()->isServiceRegistered(serviceName).value(); });
    }

    PrivateBus own_;
    QDBusConnection connection_ = own_.connect();
    QDBusServiceWatcher watcher_{serviceName, connection_};
};

TEST_F(AStartOfTheService, EndsCleanlyWhenItIsTold) {
    for (const int signal : {SIGTERM, SIGINT}) {
        const auto service = start();
        ASSERT_TRUE(isThere());
        ::kill(static_cast<pid_t>(service->id()), signal);
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
    const auto service = start();
    ASSERT_TRUE(service->ended());
    EXPECT_EQ(service->exitCode(), 1);
    EXPECT_EQ(QString{service->errors()}, "sysextd: " + storeFile() + ": it is damaged\n");
}

} // namespace

} // namespace simulator::tests
