// The program itself, in front of a service that answers what the test says.

#include "simulator/bus/Types.h"
#include "simulator/sysextctl/Output.h"
#include "tests/simulator/support/Program.h"
#include "tests/simulator/support/ScriptedControl.h"
#include "tests/simulator/support/TestApplication.h"
#include "tests/support/PrivateBus.h"

#include <QDir>

#include <gtest/gtest.h>

#include <optional>

namespace simulator::tests {

namespace {

constexpr auto camera = "com.kelvra.ip-camera.cmio";

class Sysextctl : public testing::Test {
protected:
    Sysextctl() { control_.emplace(bus_.connect()).identifiers = QStringList{camera}; }

    ScriptedControl& control() { return *control_; }
    ::tests::PrivateBus& bus() { return bus_; }

    Program started(const QStringList& words) const { return {SYSEXTCTL, words, bus_.environment()}; }
    Outcome outcomeOf(const QStringList& words) const { return started(words).outcome(); }
    Outcome withoutABus(const QStringList& words) const {
        auto environment = bus_.environment();
        environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        return Program{SYSEXTCTL, words, environment}.outcome();
    }
    /// Waits for the camera to be enabled, and has looked at the list once.
    std::unique_ptr<Program> waiting() {
        auto program = std::make_unique<Program>(SYSEXTCTL, QStringList{"wait", camera, "enabled"}, bus_.environment());
        EXPECT_TRUE(until([this] { return control().timesAsked("ListCopies") == 1; }));
        return program;
    }

private:
    TestApplication application_;
    ::tests::PrivateBus bus_;
    std::optional<ScriptedControl> control_;
};

TEST_F(Sysextctl, HasTheServiceDoWhatWasTypedAndSaysNothing) {
    EXPECT_EQ(outcomeOf({"allow", camera}), silence);
    EXPECT_EQ(outcomeOf({"fault", "next", "any", "28", "no space left", "--domain", "D"}), silence);
    EXPECT_EQ(outcomeOf({"applications", "/usr/../usr/bin/", "."}), silence);
    EXPECT_EQ(control().deeds(),
              (QStringList{"allow com.kelvra.ip-camera.cmio", "fault next any 28 no space left --domain D",
                           "applications /usr/bin " + QDir::currentPath()}));
}

TEST_F(Sysextctl, SendsTheFileThatWasNamedAndPrintsTheAnswer) {
    const auto file = written("a profile");
    EXPECT_EQ(outcomeOf({"profile", file->fileName()}), (Outcome{0, "a profile", ""}));
}

TEST_F(Sysextctl, PrintsWhatTheServiceListsOfAllOrOfOneCategory) {
    const auto printed = [this](const QStringList& words) { return QString::fromStdString(outcomeOf(words).output); };
    const CopyEntry inUse = copyIn("enabled");
    const CopyEntry driver = copyIn("waiting", "com.kelvra.driverkit.usb-to-poe");
    control().show({inUse, driver});
    EXPECT_EQ(printed({"list"}), ctl::asText({inUse, driver}));
    EXPECT_EQ(printed({"list", "driver_extension"}), ctl::asText({driver}));
    EXPECT_EQ(printed({"list", "cmio", "--json"}), ctl::asJson({inUse}));
    const RequestEntry open{3, ":1.7", "token", "/Applications/Driver Manager.app", "activation", camera, "user", 0};
    control().showRequests({open});
    EXPECT_EQ(printed({"requests"}), ctl::asText({open}));
    EXPECT_EQ(printed({"requests", "--json"}), ctl::asJson({open}));
}

TEST_F(Sysextctl, EndsAsTheServiceRefuses) {
    control().refuse("allow", "NothingWaiting", "nothing of com.kelvra.ip-camera.cmio waits");
    control().refuse("deny", "UnknownIdentifier", "x:\nno such extension");
    control().refuse("reset", "InvalidArgument", "never");
    control().refuse("restart", "LimitExceeded", "not now");
    control().refuse("enable", "ForbiddenByProfile", "forbidden");
    EXPECT_EQ(outcomeOf({"allow", camera}), failed(1, "nothing of com.kelvra.ip-camera.cmio waits"));
    EXPECT_EQ(outcomeOf({"deny", "x"}), failed(2, "x: no such extension"));
    EXPECT_EQ(outcomeOf({"reset"}), failed(2, "never"));
    EXPECT_EQ(outcomeOf({"restart"}), failed(1, "not now"));
    EXPECT_EQ(outcomeOf({"enable", "x"}), failed(1, "forbidden"));
    EXPECT_EQ(outcomeOf({"wait", "", "absent"}), failed(2, "\"\": no such extension"));
}

TEST_F(Sysextctl, CallsNobodyWhereItDoesNotUnderstand) {
    EXPECT_EQ(outcomeOf({"allow"}).code, 2);
    EXPECT_EQ(outcomeOf({"profile", "/nonexistent"}), failed(2, "cannot read /nonexistent: No such file or directory"));
    EXPECT_EQ(outcomeOf({"applications", "/", "/nonexistent"}), failed(2, "/nonexistent: no such folder"));
    EXPECT_EQ(control().deeds(), QStringList{});
}

TEST_F(Sysextctl, NeedsABusButForHelp) {
    EXPECT_EQ(withoutABus({"list"}), failed(1, "there is no session bus"));
    EXPECT_EQ(withoutABus({"allow"}).code, 2);
    const Outcome help = withoutABus({"--help"});
    EXPECT_EQ(help.code, 0);
    EXPECT_EQ(help.errors, "");
    EXPECT_EQ(help.output.rfind("usage: sysextctl VERB", 0), 0U);
    EXPECT_EQ(withoutABus({"--version"}), (Outcome{0, "sysextctl " PROJECT_VERSION "\n", ""}));
    EXPECT_EQ(withoutABus({"help", "restart"}).output.rfind("usage: sysextctl restart\n\nRestarts the", 0), 0U);
}

TEST_F(Sysextctl, NeedsTheService) {
    control().leave();
    const Outcome none =
        failed(1, "the simulated extension service is not running, and the session bus cannot start it");
    EXPECT_EQ(outcomeOf({"list"}), none);
    EXPECT_EQ(outcomeOf({"restart"}), none);
    EXPECT_EQ(outcomeOf({"wait", camera, "absent"}), none);
    EXPECT_EQ(outcomeOf({"watch"}), none);
    bus().makeActivatable(serviceName, "/bin/false");
    const Outcome dead = failed(1, "the simulated extension service cannot be started; run sysextd to see why");
    EXPECT_EQ(outcomeOf({"list"}), dead);
    EXPECT_EQ(outcomeOf({"wait", camera, "absent"}), dead);
}

TEST_F(Sysextctl, FailsIfItsOutputCannotBeWritten) {
    Program program{"/bin/sh", {"-c", R"(exec "$0" list > /dev/full)", SYSEXTCTL}, bus().environment()};
    EXPECT_EQ(program.outcome(), failed(1, "cannot write to standard output"));
}

TEST_F(Sysextctl, WaitsUntilACopyIsInTheState) {
    const auto program = waiting();
    control().show({copyIn("waiting")});
    ASSERT_TRUE(until([this] { return control().timesAsked("ListCopies") == 2; }));
    EXPECT_TRUE(program->isRunning());
    control().show({copyIn("enabled")});
    EXPECT_EQ(program->outcome(), silence);
}

TEST_F(Sysextctl, GoesOnWaitingOnceTheServiceIsBack) {
    const auto program = waiting();
    control().leave();
    EXPECT_EQ(outcomeOf({"list"}).code, 1);
    control().show({copyIn("enabled")});
    control().comeBack();
    EXPECT_EQ(program->outcome(), silence);
}

TEST_F(Sysextctl, WaitsNoLongerThanItIsTold) {
    EXPECT_EQ(outcomeOf({"wait", camera, "enabled", "--timeout", "0.05"}),
              failed(1, "com.kelvra.ip-camera.cmio is not enabled after 0.050 s"));
    control().ignore("ListIdentifiers");
    EXPECT_EQ(outcomeOf({"wait", camera, "absent", "--timeout", "0.05"}),
              failed(1, "com.kelvra.ip-camera.cmio is not absent after 0.050 s"));
}

TEST_F(Sysextctl, WaitsAndWatchesNoLongerWhenTheBusIsGone) {
    Program watching = started({"watch"});
    ASSERT_TRUE(watching.printed("-\t-\twatching\t-\n"));
    const auto program = waiting();
    bus().stop();
    EXPECT_EQ(program->outcome(), failed(1, "the session bus is gone"));
    const Outcome end = watching.outcome();
    EXPECT_EQ(end.code, 1);
    EXPECT_EQ(end.errors, "sysextctl: the session bus is gone\n");
}

TEST_F(Sysextctl, WatchesWhatTheServiceTells) {
    auto program = started({"watch"});
    auto json = started({"watch", "--json"});
    ASSERT_TRUE(program.printed("watching") && json.printed("watching"));
    emit control().Event(1500, camera, "allowed", "/A.app");
    emit control().Event(0, "", "restart\nnow", "");
    ASSERT_TRUE(program.printed("now") && json.printed("now"));
    control().leave();
    ASSERT_TRUE(program.printed("stopped"));
    control().comeBack();
    ASSERT_TRUE(program.printed("started"));
    EXPECT_EQ(program.output(), "time (s)\tbundleID\tevent\tapplication\n"
                                "-\t-\twatching\t-\n"
                                "1.500\tcom.kelvra.ip-camera.cmio\tallowed\t/A.app\n"
                                "0.000\t-\trestart now\t-\n"
                                "-\t-\tthe service stopped\t-\n"
                                "-\t-\tthe service started\t-\n");
    EXPECT_EQ(json.output().left(json.output().indexOf("restart")),
              "{\"application\":null,\"event\":\"watching\",\"identifier\":null,\"timeMilliseconds\":null}\n"
              "{\"application\":\"/A.app\",\"event\":\"allowed\",\"identifier\":\"com.kelvra.ip-camera.cmio\","
              "\"timeMilliseconds\":1500}\n"
              "{\"application\":null,\"event\":\"");
}

TEST_F(Sysextctl, WatchesNoLongerWhenNobodyReads) {
    Program program{"/bin/sh", {"-c", R"("$0" watch | head -n 1)", SYSEXTCTL}, bus().environment()};
    EXPECT_EQ(program.outcome(), (Outcome{0, "time (s)\tbundleID\tevent\tapplication\n", ""}));
}

// The verb "play", in this process -----------------------------------------------------------------------------------

/// Scenarios of these lines, and what comes of playing them; in what is printed, the name of the first one is NAME.
class Playing : public Sysextctl {
protected:
    Outcome play(const QByteArray& text, const QStringList& options = {}) {
        const auto file = written(text);
        Outcome outcome = withoutABus(QStringList{"play", file->fileName()} + options);
        for (std::string* const printed : {&outcome.output, &outcome.errors})
            *printed = QString::fromStdString(*printed).replace(file->fileName(), "NAME").toStdString();
        return outcome;
    }

    static constexpr auto right = "properties com.x\nexpect found none\n";
    static constexpr auto wrong = "properties com.x\nexpect found none\nexpect finished 0\nexpect finished 1\n";
};

TEST_F(Playing, SaysThatItWentAsItSaysOrWhereItDidNot) {
    EXPECT_EQ(play(right), (Outcome{0, "NAME: 2 steps, all as expected\n", ""}));
    EXPECT_EQ(play(wrong), failed(1, "NAME:3: \"expect finished 0\": Driver Manager heard nothing"));
}

TEST_F(Playing, EndsWithTwoWhereTheScenarioIsNotUnderstood) {
    EXPECT_EQ(play("restart\nrestart now\n"), failed(2, "NAME:2: unexpected \"now\"; usage: restart"));
}

TEST_F(Playing, ReadsStandardInput) {
    const auto playInput = [this](const QString& lines) {
        const QString command = QStringLiteral("printf '%1' | \"$0\" play -").arg(lines);
        return Program{"/bin/sh", {"-c", command, SYSEXTCTL}, bus().environment()}.outcome();
    };
    EXPECT_EQ(playInput("reset\n"), (Outcome{0, "-: 1 step, all as expected\n", ""}));
    EXPECT_EQ(playInput("reset now\n").errors.substr(0, 28), "sysextctl: standard input:1:");
    EXPECT_EQ(playInput("profile none\n").errors.substr(0, 38), "sysextctl: standard input:1: \"./none\" ");
}

TEST_F(Playing, PrintsEachStepBeforeItIsPlayed) {
    EXPECT_EQ(play("reset # now\n\nexpect finished 0\nreset\n", {"--verbose"}),
              (Outcome{1, "NAME:1: reset\nNAME:3: expect finished 0\n",
                       "sysextctl: NAME:3: \"expect finished 0\": Driver Manager heard nothing\n"}));
}

TEST_F(Playing, GoesOnWithTheNextFileAndEndsAsTheWorstOfThem) {
    const auto other = written(right);
    const Outcome allWell = play(right, {other->fileName()});
    EXPECT_EQ(allWell.code, 0);
    EXPECT_EQ(allWell.output.substr(allWell.output.size() - 35), "\n2 of 2 scenarios went as expected\n");
    const Outcome oneFailed = play(wrong, {other->fileName()});
    EXPECT_EQ(oneFailed.code, 1);
    EXPECT_EQ(oneFailed.output, other->fileName().toStdString() + ": 2 steps, all as expected\n");
    EXPECT_EQ(oneFailed.errors, "sysextctl: NAME:3: \"expect finished 0\": Driver Manager heard nothing\n"
                                "sysextctl: 1 of 2 scenarios went as expected\n");
    EXPECT_EQ(play(wrong, {"/nowhere", other->fileName()}).code, 2);
}

TEST_F(Playing, PrintsTheResultsForTestHarnesses) {
    EXPECT_EQ(
        play(right, {"--tap", "--verbose"}),
        (Outcome{0, "TAP version 13\n1..1\n# NAME:1: properties com.x\n# NAME:2: expect found none\nok 1 - NAME\n",
                 ""}));
    EXPECT_EQ(
        play("deny 'it's\n", {"--tap", "/a#\\b"}),
        (Outcome{2,
                 "TAP version 13\n1..2\n"
                 "not ok 1 - NAME\n  ---\n  message: 'NAME:1: \"deny ''it''s\": ''it''s: no such extension'\n  ...\n"
                 "not ok 2 - /a\\#\\\\b\n  ---\n  message: '/a#\\b: no such file'\n  ...\n",
                 "sysextctl: 0 of 2 scenarios went as expected\n"}));
}

} // namespace

} // namespace simulator::tests
