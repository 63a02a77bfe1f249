// "sysextctl play --bus" in front of the service itself.

#include "Simulator1Proxy.h"
#include "simulator/bus/Names.h"
#include "tests/simulator/support/Printing.h"
#include "tests/simulator/support/Program.h"
#include "tests/simulator/support/TestApplication.h"
#include "tests/simulator/support/Until.h"
#include "tests/support/PrivateBus.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTemporaryFile>

#include <csignal>

namespace simulator::tests {

namespace {

using testing::HasSubstr;

class OnTheBus : public testing::Test {
protected:
    OnTheBus() { registerTypes(); }

    /// Plays a scenario of these lines.
    int play(const QByteArray& text) {
        QTemporaryFile file;
        EXPECT_TRUE(file.open());
        file.write(text);
        file.flush();
        return playFile(file.fileName());
    }

    int playFile(const QString& path) {
        Program program{SYSEXTCTL, {"play", path, "--bus"}, bus.environment()};
        EXPECT_TRUE(program.ended());
        output = program.output().toStdString();
        errors = program.errors().toStdString();
        return program.exitCode();
    }

    QProcessEnvironment serviceEnvironment() const {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_STATE_HOME", folder.path());
        return environment;
    }

    std::string output;
    std::string errors;

private:
    TestApplication application_;

protected:
    QTemporaryDir folder;
    ::tests::PrivateBus bus{serviceEnvironment()};
};

class AScenarioOnTheBus : public OnTheBus {
protected:
    AScenarioOnTheBus() { bus.makeActivatable(serviceName, SYSEXTD); }
};

std::vector<std::string> scenarioNames() {
    std::vector<std::string> names;
    for (const QFileInfo& file : QDir{SCENARIOS}.entryInfoList({"*.scenario"}, QDir::Files, QDir::Name))
        names.push_back(file.completeBaseName().toStdString());
    return names;
}

class EachScenarioFile : public AScenarioOnTheBus, public testing::WithParamInterface<std::string> {};

TEST_P(EachScenarioFile, GoesAsItSays) {
    EXPECT_EQ(playFile(QString{SCENARIOS} + '/' + GetParam().c_str() + ".scenario"), 0) << errors;
    EXPECT_THAT(output, HasSubstr(" steps, all as expected\n"));
}

INSTANTIATE_TEST_SUITE_P(OnTheBus, EachScenarioFile, testing::ValuesIn(scenarioNames()), [](const auto& test) {
    std::string name = test.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

TEST_F(AScenarioOnTheBus, EndsAtTheFirstLineThatDoesNotGoAsItSays) {
    EXPECT_EQ(play("activate com.kelvra.ip-camera.cmio\n"
                   "expect needs approval\n"
                   "expect finished 0\n"
                   "expect finished 1\n"),
              1);
    EXPECT_THAT(errors, HasSubstr(":3: \"expect finished 0\": Driver Manager heard nothing\n"));
}

TEST_F(AScenarioOnTheBus, EndsWhereTheCopiesAreOthers) {
    EXPECT_EQ(play("install com.kelvra.ip-camera.cmio 2.0 2004 disabled\n"
                   "expect copies com.kelvra.ip-camera.cmio 2.0/2004 activated enabled\n"),
              1);
    EXPECT_THAT(errors, HasSubstr(":2: \"expect copies com.kelvra.ip-camera.cmio 2.0/2004 activated enabled\": "
                                  "the copies of com.kelvra.ip-camera.cmio are: 2.0/2004 activated disabled\n"));
}

TEST_F(AScenarioOnTheBus, EndsWhereTheOpenRequestsAreOthers) {
    EXPECT_EQ(play("activate com.kelvra.ip-camera.cmio\nexpect needs approval\nexpect requests none\n"), 1);
    EXPECT_THAT(errors, HasSubstr(":3: \"expect requests none\": the open requests are: "
                                  "com.kelvra.ip-camera.cmio user\n"));
}

TEST_F(AScenarioOnTheBus, EndsAtADeedThatIsNotPossible) {
    EXPECT_EQ(play("restart\nallow com.kelvra.ip-camera.cmio\n"), 1);
    EXPECT_THAT(errors, HasSubstr(":2: \"allow com.kelvra.ip-camera.cmio\": com.kelvra.ip-camera.cmio: nothing waits "
                                  "for approval\n"));
}

TEST_F(AScenarioOnTheBus, LeavesTheSettingsAsTheyWereAndNothingInstalled) {
    ComKelvraSimulator1ControlInterface control{serviceName, objectPath, bus.connect()};
    control.SetDeveloperMode(true).waitForFinished();
    control.SetSwitch("denial", "silence").waitForFinished();
    control.SetApplicationsFolders({"/somewhere"}).waitForFinished();
    ASSERT_EQ(play("switch upgrade asked\ninstall com.kelvra.ip-camera.cmio 2.0 2004\ndeveloper off\n"
                   "activate com.kelvra.ip-camera.cmio\nexpect asked to replace 2.0/2004 by 2.1/2105\n"
                   "expect needs approval\n"),
              0)
        << errors;
    EXPECT_TRUE(control.GetDeveloperMode().value());
    EXPECT_EQ(control.GetApplicationsFolders().value(), QStringList{"/somewhere"});
    for (const SwitchEntry& entry : control.ListSwitches().value())
        EXPECT_EQ(entry.value, entry.name == "denial" ? "silence" : entry.values.first()) << entry.name.toStdString();
    EXPECT_TRUE(control.ListCopies().value().isEmpty());
}

TEST_F(AScenarioOnTheBus, LeavesTheSettingsAsTheyWereWhenItIsToldToEnd) {
    ComKelvraSimulator1ControlInterface control{serviceName, objectPath, bus.connect()};
    control.SetApplicationsFolders({"/somewhere"}).waitForFinished();
    QObject::connect(&control, &ComKelvraSimulator1ControlInterface::Changed, [] {}); // an event for until()
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write(QByteArray{"restart\n"}.repeated(100000));
    file.flush();
    for (const int signal : {SIGTERM, SIGINT}) {
        Program program{SYSEXTCTL, {"play", file.fileName(), "--bus"}, bus.environment()};
        ASSERT_TRUE(until([&] { return control.GetApplicationsFolders().value() != QStringList{"/somewhere"}; }));
        ASSERT_TRUE(program.signal(signal));
        ASSERT_TRUE(program.ended());
        EXPECT_EQ(program.exitCode(), 1);
        EXPECT_THAT(program.errors().toStdString(), HasSubstr(": it was told to end\n"));
        EXPECT_EQ(control.GetApplicationsFolders().value(), QStringList{"/somewhere"});
    }
}

TEST_F(AScenarioOnTheBus, BeginsWithNothingInstalledAndTheDefaults) {
    ASSERT_EQ(play("activate com.kelvra.ip-camera.cmio\nexpect needs approval\n"), 0) << errors;
    ComKelvraSimulator1ControlInterface control{serviceName, objectPath, bus.connect()};
    control.SetSwitch("properties", "error").waitForFinished();
    EXPECT_EQ(play("properties com.kelvra.ip-camera.cmio\nexpect found none\n"), 0) << errors;
}

TEST_F(OnTheBus, AScenarioNeedsTheService) {
    EXPECT_EQ(play("restart\n"), 1);
    EXPECT_EQ(errors, "sysextctl: the simulated extension service is not running, and nothing here starts it\n");
}

} // namespace

} // namespace simulator::tests
