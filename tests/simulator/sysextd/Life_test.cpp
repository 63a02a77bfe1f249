// How the service comes, goes, and dies.

#include "simulator/store/Store.h"
#include "simulator/sysextd/BusObject.h"
#include "tests/simulator/support/SimulatedMac.h"

#include <QDBusConnectionInterface>
#include <QFile>
#include <QFileInfo>

#include <gmock/gmock.h>

#include <csignal>
#include <optional>

namespace simulator::tests {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AService : public OnASimulatedMac {};

TEST_F(AService, LosesNothingThatWasAnsweredWhenItIsKilled) {
    for (const int signal : {SIGKILL, SIGTERM}) {
        EXPECT_EQ(mac.does("install com.kelvra.ip-camera.cmio 1.0 " + QString::number(signal)), "");
        EXPECT_EQ(mac.does("switch upgrade asked"), "");
        mac.signalService(signal);
        ASSERT_TRUE(mac.serviceIsGone());
        EXPECT_THAT(mac.copies(camera), ElementsAre(std::to_string(signal) + " enabled"));
        EXPECT_EQ(mac.does("switch upgrade").substr(0, 14), "upgrade\tasked\t");
        EXPECT_EQ(mac.does("reset"), "");
    }
}

TEST_F(AService, EndsInTheMiddleOfARequestAsOrderedAndBeginsAnew) {
    EXPECT_EQ(mac.does("fault next activate crash"), "");
    const auto application = mac.application();
    application->submit("a", "activation", camera);
    ASSERT_TRUE(mac.serviceIsGone());
    EXPECT_THAT(mac.copies(camera), IsEmpty());
    application->submit("b", "activation", camera);
    EXPECT_TRUE(application->hears("b needs approval"));
    EXPECT_EQ(application->lines(), QStringList{"b needs approval"});
}

/// Other starts of the service, with the store of one that is gone, on a bus that starts nothing by itself.
class AStartOfTheService : public AService {
protected:
    AStartOfTheService() {
        mac.signalService(SIGTERM);
        EXPECT_TRUE(mac.serviceIsGone());
    }

    std::unique_ptr<Program> start() const { return std::make_unique<Program>(SYSEXTD, QStringList{}, environment()); }

    QProcessEnvironment environment() const {
        QProcessEnvironment environment = own_.environment();
        environment.insert("XDG_STATE_HOME", mac.folder());
        return environment;
    }

    bool isThere() {
        return until([&] { return connection_.interface()->isServiceRegistered(serviceName).value(); });
    }

    static QByteArray contentsOf(const QString& path) {
        QFile file{path};
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray{};
    }

    Outcome complaint(const QString& reason) const {
        return {1, "", "sysextd: " + mac.storeFile().toStdString() + ": " + reason.toStdString() + "\n"};
    }

    ::tests::PrivateBus own_;
    QDBusConnection connection_ = own_.connect();
    QDBusServiceWatcher watcher_{serviceName, connection_};
};

TEST_F(AStartOfTheService, EndsCleanlyWhenTheBusGoesAway) {
    const auto service = start();
    ASSERT_TRUE(isThere());
    own_.stop();
    EXPECT_EQ(service->outcome(), silence);
}

TEST_F(AStartOfTheService, NeedsABus) {
    QProcessEnvironment nowhere = environment();
    nowhere.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    const Outcome outcome = Program{SYSEXTD, {}, nowhere}.outcome();
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.errors, testing::StartsWith("sysextd: there is no session bus: "));
}

TEST_F(AStartOfTheService, AnswersAnArgumentInsteadOfServing) {
    const auto outcomeOf = [this](const QString& argument) {
        return Program{SYSEXTD, {argument}, environment()}.outcome();
    };
    EXPECT_EQ(outcomeOf("--version"), (Outcome{0, "sysextd " PROJECT_VERSION "\n", ""}));
    EXPECT_EQ(outcomeOf("--frobnicate"),
              (Outcome{2, "", "sysextd: unknown argument \"--frobnicate\"; see \"sysextd --help\"\n"}));
    const Outcome help = outcomeOf("--help");
    EXPECT_EQ(help.code, 0);
    EXPECT_EQ(help.errors, "");
    EXPECT_THAT(help.output, testing::StartsWith("usage: sysextd [--help | --version]\n"));
}

TEST_F(AStartOfTheService, LeavesTheStoreToAnotherThatHasIt) {
    const auto first = start();
    ASSERT_TRUE(isThere());
    EXPECT_EQ(start()->outcome(), complaint("it is in use by another service"));
}

TEST_F(AStartOfTheService, LeavesADamagedStoreAlone) {
    ASSERT_TRUE(QFile::resize(mac.storeFile(), 0));
    EXPECT_EQ(start()->outcome(), complaint("it is damaged: it is empty"));
    EXPECT_EQ(contentsOf(mac.storeFile()), "");
}

TEST_F(AStartOfTheService, GivesNoAnswerWhenItsStoreCannotGrowAndKeepsWhatItHad) {
    Program service{"/bin/sh", {"-c", "trap '' XFSZ; ulimit -f 200; exec \"$0\"", SYSEXTD}, environment()};
    ASSERT_TRUE(isThere());
    Control control{serviceName, objectPath, connection_};
    const auto install = [&](int version) {
        const QString text(4000, 'x');
        auto reply = control.Do({"install", camera, text, QString::number(version), "uninstalling"}, {});
        reply.waitForFinished();
        return reply.error().type();
    };
    int answered = 0;
    auto error = QDBusError::NoError;
    while (answered < 1000 && (error = install(answered)) == QDBusError::NoError)
        ++answered;
    EXPECT_EQ(error, QDBusError::NoReply);
    EXPECT_EQ(service.outcome(), complaint("the disk cannot be read or written"));
    const auto again = start();
    ASSERT_TRUE(isThere());
    EXPECT_EQ(must(control.ListCopies()).value().size(), answered);
}

/// What XDG_STATE_HOME is; nothing: it is not set.
class AStateFolder : public AStartOfTheService, public testing::WithParamInterface<std::optional<QString>> {};

TEST_P(AStateFolder, ThatIsNoneIsTheOneInTheHomeFolder) {
    const QTemporaryDir home;
    QProcessEnvironment environment = own_.environment();
    environment.insert("HOME", home.path());
    environment.remove("XDG_STATE_HOME");
    if (GetParam()) environment.insert("XDG_STATE_HOME", *GetParam());
    const Program service{SYSEXTD, {}, environment};
    ASSERT_TRUE(isThere());
    EXPECT_TRUE(QFile::exists(home.filePath(".local/state/kelvra-simulator/store.sqlite")));
}

INSTANTIATE_TEST_SUITE_P(, AStateFolder, testing::Values(std::nullopt, QString{}, QString{"state"}));

// The machine and its store, in this process -------------------------------------------------------------------------

class AServiceInThisProcess : public testing::Test {
private:
    TestApplication application_;
    QTemporaryDir folder_;

protected:
    const QString file = folder_.filePath("store.sqlite");
    Service service{file.toStdString()};

    /// What a kill at this moment would leave in the store.
    State kept() const { return Store{copyOfStore(file, folder_.path()).toStdString()}.load(); }
};

TEST_F(AServiceInThisProcess, HasKeptWhatItSaysWhenItSaysIt) {
    int said = 0;
    const auto look = [&] {
        ++said;
        EXPECT_TRUE(kept() == service.machine().state());
    };
    QObject::connect(&service, &Service::answered, look);
    QObject::connect(&service, &Service::happened, look);
    QObject::connect(&service, &Service::changed, look);
    QObject::connect(&service, &Service::restarting, look);
    QObject::connect(&service, &Service::settled, look);
    service.perform([](Machine& machine) {
        return machine.submit({"client", "a", "", RequestKind::properties, camera});
    });
    ASSERT_TRUE(until([&] { return service.machine().requests().empty(); }));
    // In one transaction, of which it says once that it changed something.
    service.perform([](Machine& machine) { return machine.advance(7); });
    service.perform([](Machine& machine) -> Verdict {
        machine.restart();
        return done;
    });
    EXPECT_TRUE(until([&] { return said == 3 + 4 + 5; }));
}

TEST_F(AServiceInThisProcess, HasKeptWhatItListsWhenItListsIt) {
    BusObject object{QDBusConnection{"none"}, service};
    const auto look = [&](auto list) {
        service.perform([](Machine& machine) { return machine.advance(7); });
        (object.*list)();
        EXPECT_TRUE(kept() == service.machine().state());
    };
    look(&BusObject::ListCopies);
    look(&BusObject::ListRequests);
    look(&BusObject::ListIdentifiers);
}

} // namespace

} // namespace simulator::tests
