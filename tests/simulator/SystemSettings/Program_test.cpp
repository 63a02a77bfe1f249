// The program itself: how it starts and ends.

#include "tests/simulator/support/Printing.h"

#include "tests/simulator/support/Program.h"
#include "tests/simulator/support/ScriptedControl.h"
#include "tests/simulator/support/TestApplication.h"
#include "tests/simulator/support/Until.h"
#include "tests/support/PrivateBus.h"

#include <csignal>
#include <optional>

namespace simulator::tests {

namespace {

class TheSettingsProgram : public testing::Test {
protected:
    TheSettingsProgram() { control_.emplace(bus_.connect()); }

    ScriptedControl& control() { return *control_; }

    Program started() {
        auto environment = bus_.environment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        return {SYSTEM_SETTINGS, {}, environment};
    }

    bool untilItListed() {
        return until([this] { return control().timesAsked("ListRequests") > 0; });
    }

private:
    TestApplication application_;
    ::tests::PrivateBus bus_;
    std::optional<ScriptedControl> control_;
};

} // namespace

TEST_F(TheSettingsProgram, EndsCleanlyOnSigterm) {
    auto program = started();
    ASSERT_TRUE(untilItListed());
    ASSERT_TRUE(program.signal(SIGTERM));
    ASSERT_TRUE(program.ended());
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_EQ(program.errors(), "");
}

TEST_F(TheSettingsProgram, EndsCleanlyOnSigtermWhileAQuestionIsOpen) {
    RequestEntry question;
    question.identifier = "x";
    question.stage = "authorization";
    control().showRequests({question});
    auto program = started();
    ASSERT_TRUE(untilItListed());
    ASSERT_TRUE(program.signal(SIGTERM));
    ASSERT_TRUE(program.ended());
    EXPECT_EQ(program.exitCode(), 0);
}

} // namespace simulator::tests
