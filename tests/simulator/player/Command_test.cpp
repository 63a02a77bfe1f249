// "sysextctl play FILE -- COMMAND": another program on the bus of the scenario.

#include "simulator/player/BusMac.h"
#include "simulator/player/Command.h"
#include "tests/simulator/player/APlayer.h"
#include "tests/support/Descriptors.h"

#include <QFile>

#include <csignal>
#include <poll.h>

#include <sys/syscall.h>

namespace simulator::tests {

namespace {

/// Has the program of the bundle ask for an activation, and ends when that has been told the text.
constexpr auto asking = R"(coproc meter { exec "$0"; }
echo '["submit","1","activation","com.example.meter"]' >&"${meter[1]}"
while read -r line <&"${meter[0]}"; do
    case $line in *"$1"*) exit 0 ;; esac
done
exit 9
)";

class ACommand : public APlayer {
protected:
    ACommand() {
        BundleOnDisk bundle = player::sampleApplication();
        bundle.identifier = "com.example.meter-manager";
        bundle.team = "EXAMPLE001";
        bundle.extensions = {};
        player::carry(bundle, player::extensionNamed("com.example.meter.dext", {"1.0", "1"}));
        player::writeBundle(bundle, bundles_.filePath("Meter.app"), SUBMIT);
    }
    Outcome play(const QByteArray& text, const QStringList& command, const QStringList& options = {}) {
        const auto file = written(text);
        Outcome outcome =
            started(file->fileName(), options + QStringList{"--", "/bin/bash", "-c"} + command)->outcome();
        outcome.errors = QString::fromStdString(outcome.errors).replace(file->fileName(), "NAME").toStdString();
        return outcome;
    }
    /// A program that asks, and waits until it has been told the text.
    QStringList askingUntil(const QString& text) const { return {asking, program(), text}; }
    const QTemporaryDir& bundles() const { return bundles_; }
    QString program() const { return player::programOf(bundles_.filePath("Meter.app")); }

private:
    QTemporaryDir bundles_;
};

TEST_F(ACommand, IsPlayedBesideTheLinesThatWaitForIt) {
    const Outcome outcome = play("start\nexpect request com.example.meter user\nallow com.example.meter\n"
                                 "expect copies com.example.meter 1.0/1 activated enabled\nexpect exit 0\n",
                                 askingUntil("finished 0"));
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_TRUE(leavesNothing());
}

TEST_F(ACommand, IsInAnApplicationsFolderUnlessTheScenarioNamesOthers) {
    EXPECT_EQ(play("applications /elsewhere\nstart\nexpect exit 0\n", askingUntil("failed 3")).code, 0);
    EXPECT_EQ(
        play("applications /elsewhere\napplications /Applications\nstart\nexpect request com.example.meter user\n",
             askingUntil("finished"))
            .code,
        0);
}

TEST_F(ACommand, EndsWithTheMacAndMayBeStartedAgain) {
    const Outcome outcome =
        play("start\nexpect request com.example.meter user\nrestart\nexpect requests none\n"
             "start\nexpect request com.example.meter user\nstop\nexpect requests none\nallow com.example.meter\n",
             askingUntil("finished"));
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.code, 0);
}

TEST_F(ACommand, IsWaitedForNoLongerThanToldNorAfterItsEnd) {
    const auto waitFor = [this](const QByteArray& line, const QString& command, const QString& timeout) {
        return play("start\n" + line + '\n', {command, program()}, {"--timeout", timeout}).errors;
    };
    const std::string nothing = "\"expect request com.x user\": the open requests are: none\n";
    EXPECT_EQ(waitFor("expect request com.x user", "exec sleep 1000", "0.05"), "sysextctl: NAME:2: " + nothing);
    EXPECT_EQ(waitFor("expect request com.x user", "exit 0", "1h"), "sysextctl: NAME:2: " + nothing);
    EXPECT_EQ(waitFor("expect exit 0", "exec sleep 1000", "0.05"),
              "sysextctl: NAME:2: \"expect exit 0\": the command is still running\n");
    EXPECT_EQ(waitFor("expect exit 0", "exit 3", "1h"),
              "sysextctl: NAME:2: \"expect exit 0\": the command exited with 3\n");
    EXPECT_EQ(waitFor("expect exit 137", "kill -KILL $$", "1h"), "");
}

TEST_F(ACommand, MustBeStartedByTheScenario) {
    EXPECT_EQ(play("restart\n", {"", program()}),
              failed(2, "NAME: no line starts the command; add the line \"start\""));
}

TEST_F(ACommand, EndsWithAllThatItStartedWhenThePlayerIsKilled) {
    const auto file = written("start\nexpect exit 0\n");
    const QStringList command{"--", "/bin/bash", "-c", "sleep 1000 & echo $!; wait", program()};
    const auto player = started(file->fileName(), command);
    ASSERT_TRUE(until([&] { return player->errors().endsWith('\n'); }));
    const ::tests::Descriptor child{static_cast<int>(syscall(SYS_pidfd_open, player->errors().trimmed().toInt(), 0))};
    ASSERT_GE(child.get(), 0);
    ASSERT_TRUE(player->signal(SIGKILL));
    pollfd end{child.get(), POLLIN, 0};
    EXPECT_EQ(poll(&end, 1, 20'000), 1);
    EXPECT_TRUE(leavesNothing());
}

TEST_F(ACommand, FailsTheScenarioIfItEndedWithAStatusThatNoLineExpects) {
    const auto stopped = [this](const QString& script, bool isExpected) {
        player::Command command{{"/bin/sh", "-c", script}, {}, bundles().filePath("note")};
        command.start();
        EXPECT_TRUE(until([&] { return command.hasEnded(); }));
        if (isExpected) command.takeStatus();
        command.stop();
    };
    EXPECT_THROW(stopped("exit 3", false), player::NotDone);
    EXPECT_NO_THROW(stopped("exit 3", true));
    EXPECT_NO_THROW(stopped("exit 0", false));
}

} // namespace

} // namespace simulator::tests
