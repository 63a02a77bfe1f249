// The verb "play" in a process of its own, on no bus at all.

#include "tests/simulator/support/Printing.h"
#include "tests/simulator/support/Program.h"
#include "tests/simulator/support/TestApplication.h"

#include <QTemporaryFile>

namespace simulator::tests {

namespace {

class PlayingAScenario : public testing::Test {
protected:
    /// Plays a scenario of these lines.
    int play(const QByteArray& text) {
        QTemporaryFile file;
        EXPECT_TRUE(file.open());
        file.write(text);
        file.flush();
        name = file.fileName().toStdString();
        return playFile(file.fileName());
    }

    int playFile(const QString& path) {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
        Program program{SYSEXTCTL, {"play", path}, environment};
        EXPECT_TRUE(program.ended());
        output = program.output().toStdString();
        errors = program.errors().toStdString();
        return program.exitCode();
    }

    std::string name;
    std::string output;
    std::string errors;

private:
    TestApplication application_;
};

} // namespace

TEST_F(PlayingAScenario, SaysThatItWentAsItSays) {
    EXPECT_EQ(play("properties com.x\nexpect found none\n"), 0);
    EXPECT_EQ(output, name + ": 2 steps, all as expected\n");
    EXPECT_EQ(errors, "");
}

TEST_F(PlayingAScenario, EndsWithOneAtTheFirstLineThatDoesNotGoAsItSays) {
    EXPECT_EQ(play("properties com.x\nexpect found none\nexpect finished 0\nexpect finished 1\n"), 1);
    EXPECT_EQ(output, "");
    EXPECT_EQ(errors, "sysextctl: " + name + ":3: \"expect finished 0\": Driver Manager heard nothing\n");
}

TEST_F(PlayingAScenario, EndsWithTwoWhereALineIsNotUnderstood) {
    EXPECT_EQ(play("restart\nrestart now\n"), 2);
    EXPECT_EQ(errors, "sysextctl: " + name + ":2: \"now\" is too much; right would be: restart\n");
}

TEST_F(PlayingAScenario, EndsWithTwoWhereThereIsNoSuchFile) {
    EXPECT_EQ(playFile("/nowhere.scenario"), 2);
    EXPECT_EQ(errors, "sysextctl: /nowhere.scenario: there is no such file\n");
}

TEST_F(PlayingAScenario, EndsWithTwoWhereTheFileIsAFolder) {
    EXPECT_EQ(playFile("/"), 2);
    EXPECT_EQ(errors, "sysextctl: /: it is a folder\n");
}

} // namespace simulator::tests
