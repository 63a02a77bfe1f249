// The program itself, on a bus of its own, in front of a service that answers what the test says.

#include "simulator/bus/Names.h"
#include "tests/simulator/support/Printing.h"
#include "tests/simulator/support/Program.h"
#include "tests/simulator/support/ScriptedControl.h"
#include "tests/simulator/support/TestApplication.h"
#include "tests/simulator/support/Until.h"
#include "tests/support/PrivateBus.h"

#include <QDir>
#include <QTemporaryFile>

#include <optional>

namespace simulator::tests {

namespace {

constexpr auto camera = "com.kelvra.ip-camera.cmio";

/// What a program left behind.
struct Outcome {
    int code = -1;
    std::string output;
    std::string errors;

    bool operator==(const Outcome&) const = default;
};

void PrintTo(const Outcome& outcome, std::ostream* stream) {
    *stream << outcome.code << ", output <" << outcome.output << ">, errors <" << outcome.errors << '>';
}

class Sysextctl : public testing::Test {
protected:
    Sysextctl() { control_.emplace(bus_.connect()).identifiers = QStringList{camera}; }

    ScriptedControl& control() { return *control_; }
    ::tests::PrivateBus& bus() { return bus_; }

    Program started(const QStringList& arguments) { return {SYSEXTCTL, arguments, bus_.environment()}; }

    Outcome outcomeOf(const QStringList& arguments) {
        auto program = started(arguments);
        return outcomeOf(program);
    }

    static Outcome outcomeOf(Program& program) {
        EXPECT_TRUE(program.ended());
        return {program.exitCode(), program.output().toStdString(), program.errors().toStdString()};
    }

private:
    TestApplication application_;
    ::tests::PrivateBus bus_;
    std::optional<ScriptedControl> control_;
};

} // namespace

TEST_F(Sysextctl, PrintsTheListOfTheService) {
    control().show({copyIn("waiting")});
    EXPECT_EQ(outcomeOf({"list"}),
              (Outcome{0,
                       "1 extension(s)\n"
                       "--- com.apple.system_extension.cmio\n"
                       "enabled\tactive\tteamID\tbundleID (version)\tname\t[state]\n"
                       "\t*\tKELVRA0001\tcom.kelvra.ip-camera.cmio (2.1/2105)\tCamera\t[activated waiting for user]\n",
                       ""}));
    EXPECT_EQ(outcomeOf({"list", "driver_extension"}), (Outcome{0, "0 extension(s)\n", ""}));
}

TEST_F(Sysextctl, SaysNothingWhereTheServiceDidWhatItWasAsked) {
    const Outcome silent{0, "", ""};
    EXPECT_EQ(outcomeOf({"allow", camera}), silent);
    EXPECT_EQ(outcomeOf({"deny", camera}), silent);
    EXPECT_EQ(outcomeOf({"authorize", camera}), silent);
    EXPECT_EQ(outcomeOf({"refuse", camera}), silent);
    EXPECT_EQ(outcomeOf({"disable", camera}), silent);
    EXPECT_EQ(outcomeOf({"enable", camera}), silent);
    EXPECT_EQ(outcomeOf({"restart"}), silent);
    EXPECT_EQ(outcomeOf({"reset"}), silent);
    EXPECT_EQ(outcomeOf({"install", camera, "2.0", "2004", "waiting"}), silent);
    EXPECT_EQ(outcomeOf({"uninstall", "-", camera}), silent);
    EXPECT_EQ(outcomeOf({"developer", "on"}), silent);
    EXPECT_EQ(outcomeOf({"switch", "denied", "silent"}), silent);
    EXPECT_EQ(outcomeOf({"fault", "next", "activate", "8", "broken"}), silent);
    EXPECT_EQ(control().deeds(), (QStringList{"Allow com.kelvra.ip-camera.cmio", "Deny com.kelvra.ip-camera.cmio",
                                              "Authorize com.kelvra.ip-camera.cmio", "Refuse com.kelvra.ip-camera.cmio",
                                              "Disable com.kelvra.ip-camera.cmio", "Enable com.kelvra.ip-camera.cmio",
                                              "Restart", "Reset", "Install com.kelvra.ip-camera.cmio 2.0 2004 waiting",
                                              "Uninstall - com.kelvra.ip-camera.cmio", "SetDeveloperMode on",
                                              "SetSwitch denied silent", "OrderFault activation error  8 broken 0"}));
}

TEST_F(Sysextctl, EndsWith1AndOneLineIfNothingWaits) {
    control().refuse("Allow", "NothingWaiting", "nothing of com.kelvra.ip-camera.cmio waits");
    EXPECT_EQ(outcomeOf({"allow", camera}),
              (Outcome{1, "", "sysextctl: nothing of com.kelvra.ip-camera.cmio waits\n"}));
}

TEST_F(Sysextctl, EndsWith2AndOneLineIfTheIdentifierIsUnknown) {
    control().refuse("Deny", "UnknownIdentifier", "x:\nno such extension");
    EXPECT_EQ(outcomeOf({"deny", "x"}), (Outcome{2, "", "sysextctl: x: no such extension\n"}));
    EXPECT_EQ(outcomeOf({"wait", "x", "absent"}), (Outcome{2, "", "sysextctl: x: no such extension\n"}));
}

TEST_F(Sysextctl, EndsWith2AndOneLineIfTheVerbIsUnknown) {
    EXPECT_EQ(outcomeOf({"frobnicate"}),
              (Outcome{2, "", "sysextctl: unknown verb \"frobnicate\"; \"sysextctl --help\" lists the verbs\n"}));
}

TEST_F(Sysextctl, EndsWith1AndOneLineWithoutAService) {
    control().leave();
    const Outcome none{1, "",
                       "sysextctl: the simulated extension service is not running, and nothing here starts it\n"};
    EXPECT_EQ(outcomeOf({"list"}), none);
    EXPECT_EQ(outcomeOf({"wait", camera, "absent"}), none);
    EXPECT_EQ(outcomeOf({"watch"}), none);
}

TEST_F(Sysextctl, EndsWith1AndSaysWhereTheReasonIsIfTheServiceCannotBeStarted) {
    control().leave();
    bus().makeActivatable(serviceName, "/bin/false");
    const Outcome none{1, "",
                       "sysextctl: the simulated extension service cannot be started; running sysextd shows why\n"};
    EXPECT_EQ(outcomeOf({"list"}), none);
    EXPECT_EQ(outcomeOf({"wait", camera, "absent"}), none);
}

TEST_F(Sysextctl, EndsWith1AndOneLineWithoutABus) {
    auto environment = bus().environment();
    environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    Program program{SYSEXTCTL, {"list"}, environment};
    EXPECT_EQ(outcomeOf(program), (Outcome{1, "", "sysextctl: there is no session bus\n"}));
}

TEST_F(Sysextctl, GivesHelpWithoutABus) {
    auto environment = bus().environment();
    environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    Program program{SYSEXTCTL, {"--help"}, environment};
    const auto help = outcomeOf(program);
    EXPECT_EQ(help.code, 0);
    EXPECT_EQ(help.errors, "");
    EXPECT_EQ(help.output.rfind("usage: sysextctl VERB", 0), 0U);
}

TEST_F(Sysextctl, FailsIfItsOutputCannotBeWritten) {
    Program program{"/bin/sh", {"-c", R"(exec "$0" list > /dev/full)", SYSEXTCTL}, bus().environment()};
    EXPECT_EQ(outcomeOf(program), (Outcome{1, "", "sysextctl: standard output takes no more\n"}));
}

TEST_F(Sysextctl, WaitsNotAtAllForWhatIsSoAlready) {
    EXPECT_EQ(outcomeOf({"wait", camera, "absent"}), (Outcome{0, "", ""}));
    control().show({copyIn("uninstalling"), copyIn("waiting")});
    EXPECT_EQ(outcomeOf({"wait", camera, "waiting"}), (Outcome{0, "", ""}));
}

TEST_F(Sysextctl, WaitsUntilACopyIsInTheState) {
    auto program = started({"wait", camera, "enabled"});
    ASSERT_TRUE(until([this] { return control().timesAsked("ListCopies") == 1; }));
    control().show({copyIn("waiting")});
    ASSERT_TRUE(until([this] { return control().timesAsked("ListCopies") == 2; }));
    EXPECT_TRUE(program.isRunning());
    control().show({copyIn("enabled")});
    EXPECT_EQ(outcomeOf(program), (Outcome{0, "", ""}));
}

TEST_F(Sysextctl, EndsWith1IfTheStateIsNotReachedInTime) {
    EXPECT_EQ(outcomeOf({"wait", camera, "enabled", "--timeout", "0.05"}),
              (Outcome{1, "", "sysextctl: com.kelvra.ip-camera.cmio is not enabled after 0.050 s\n"}));
}

TEST_F(Sysextctl, EndsWith1IfTheServiceDoesNotAnswerInTime) {
    control().ignore("ListIdentifiers");
    EXPECT_EQ(outcomeOf({"wait", camera, "absent", "--timeout", "0.05"}),
              (Outcome{1, "", "sysextctl: com.kelvra.ip-camera.cmio is not absent after 0.050 s\n"}));
}

TEST_F(Sysextctl, WaitsOnThroughTheDeathOfTheService) {
    auto program = started({"wait", camera, "enabled"});
    ASSERT_TRUE(until([this] { return control().timesAsked("ListCopies") == 1; }));
    control().leave();
    control().show({copyIn("enabled")});
    EXPECT_TRUE(program.isRunning());
    control().comeBack();
    EXPECT_EQ(outcomeOf(program), (Outcome{0, "", ""}));
}

TEST_F(Sysextctl, WaitsNoLongerWhenTheBusIsGone) {
    auto program = started({"wait", camera, "enabled"});
    ASSERT_TRUE(until([this] { return control().timesAsked("ListCopies") == 1; }));
    bus().stop();
    EXPECT_EQ(outcomeOf(program), (Outcome{1, "", "sysextctl: the bus is gone\n"}));
}

TEST_F(Sysextctl, WatchesWhatTheServiceTells) {
    auto program = started({"watch"});
    ASSERT_TRUE(program.printed("-\t-\twatching\n"));
    emit control().Event(1500, camera, "allowed");
    ASSERT_TRUE(program.printed("allowed\n"));
    control().leave();
    ASSERT_TRUE(program.printed("gone\n"));
    control().comeBack();
    ASSERT_TRUE(program.printed("there\n"));
    EXPECT_EQ(program.output(), "-\t-\twatching\n"
                                "1.500\tcom.kelvra.ip-camera.cmio\tallowed\n"
                                "-\t-\tthe service is gone\n"
                                "-\t-\tthe service is there\n");
}

TEST_F(Sysextctl, WatchesNoLongerWhenNobodyReads) {
    Program program{"/bin/sh", {"-c", R"("$0" watch | head -n 1)", SYSEXTCTL}, bus().environment()};
    EXPECT_EQ(outcomeOf(program), (Outcome{0, "-\t-\twatching\n", ""}));
}

TEST_F(Sysextctl, WatchesNoLongerWhenTheBusIsGone) {
    auto program = started({"watch"});
    ASSERT_TRUE(program.printed("-\t-\twatching\n"));
    bus().stop();
    const auto end = outcomeOf(program);
    EXPECT_EQ(end.code, 1);
    EXPECT_EQ(end.errors, "sysextctl: the bus is gone\n");
}

TEST_F(Sysextctl, BringsShowsAndRemovesAProfile) {
    EXPECT_EQ(outcomeOf({"profile"}), (Outcome{0, "No profile\n", ""}));
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write("<plist/>\n");
    file.close();
    EXPECT_EQ(outcomeOf({"profile", file.fileName()}), (Outcome{0, "", ""}));
    EXPECT_EQ(outcomeOf({"profile"}), (Outcome{0, "<plist/>\n", ""}));
    EXPECT_EQ(outcomeOf({"profile", "--remove"}), (Outcome{0, "", ""}));
    EXPECT_EQ(control().profile, "");
}

TEST_F(Sysextctl, EndsWith1IfAProfileCannotBeRead) {
    EXPECT_EQ(outcomeOf({"profile", "/nonexistent"}),
              (Outcome{1, "", "sysextctl: cannot read /nonexistent: No such file or directory\n"}));
    EXPECT_EQ(control().deeds(), QStringList{});
}

TEST_F(Sysextctl, PrintsTheReadingOfTheAdvancedClock) {
    EXPECT_EQ(outcomeOf({"advance", "90s"}), (Outcome{0, "90.500\n", ""}));
}

TEST_F(Sysextctl, SetsTheApplicationsFoldersByTheirAbsolutePaths) {
    EXPECT_EQ(outcomeOf({"applications", "/a b/c/", "d"}), (Outcome{0, "", ""}));
    EXPECT_EQ(control().applicationsFolders, (QStringList{"/a b/c", QDir::current().absoluteFilePath("d")}));
}

TEST_F(Sysextctl, ShowsTheApplicationsFoldersALineEach) {
    control().applicationsFolders = {"/Applications", "/a b"};
    EXPECT_EQ(outcomeOf({"applications"}), (Outcome{0, "/Applications\n/a b\n", ""}));
}

TEST_F(Sysextctl, SaysWhetherDeveloperModeIsOn) {
    EXPECT_EQ(outcomeOf({"developer"}), (Outcome{0, "Developer mode is on\n", ""}));
}

TEST_F(Sysextctl, ShowsASwitch) {
    control().switches = {{"denied", "11", {"11", "silent"}, "what a denied activation gets"}};
    EXPECT_EQ(outcomeOf({"switch", "denied"}),
              (Outcome{0, "denied\t11\t(11 | silent)\twhat a denied activation gets\n", ""}));
    EXPECT_EQ(outcomeOf({"switch", "unknown"}),
              (Outcome{2, "", "sysextctl: unknown switch \"unknown\"; there is denied\n"}));
}

TEST_F(Sysextctl, ListsRequests) {
    EXPECT_EQ(outcomeOf({"requests"}), (Outcome{0, "0 request(s)\n", ""}));
    EXPECT_EQ(outcomeOf({"requests", "--json"}), (Outcome{0, "[]\n", ""}));
    EXPECT_EQ(outcomeOf({"list", "--json"}), (Outcome{0, "[]\n", ""}));
}

} // namespace simulator::tests
