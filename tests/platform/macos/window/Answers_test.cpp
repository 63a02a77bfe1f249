#include "model/FailureMessages.h"
#include "tests/macos/gnustep/StandIns.h"
#include "tests/platform/macos/window/WindowTest.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>

namespace macos_tests {
namespace {

class TheApplication : public WindowTest {
protected:
    void failWith(Desk& desk, const char* domain, const long code, const char* description) {
        desk.click("Activate Camera Driver");
        const long times = submitted("activation " + camera) + 1;
        ASSERT_TRUE(isSubmitted(desk, "activation " + camera, times));
        service_.fail(service_.latest("activation " + camera), standin::makeError(domain, code, description));
    }
    static testing::AssertionResult comesToLog(Desk& desk, const std::string& line) {
        const auto& lines = standin::loggedLines();
        if (desk.until([&] { return std::count(lines.begin(), lines.end(), line) > 0; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "the log has " << testing::PrintToString(lines);
    }
};

TEST_F(TheApplication, LogsEachErrorAndLetsTheUserTryAgain) {
    run([this](Desk& desk) {
        for (const model::FailureMessage& message : model::failureMessages) {
            const auto code = static_cast<long>(message.code);
            const std::string description = "error " + std::to_string(code);
            failWith(desk, standin::serviceDomain(), code, description.c_str());
            EXPECT_TRUE(
                comesToLog(desk, "Sysex request failed: " + description + " (" + std::string{message.text} + ")"));
        }
        EXPECT_TRUE(desk.has("Activate Camera Driver"));
    });
}

TEST_F(TheApplication, SaysNothingOfAnErrorOfAnotherDomain) {
    run([this](Desk& desk) {
        failWith(desk, "another domain", 4, "of another domain");
        failWith(desk, standin::serviceDomain(), 4, "of the service");
        ASSERT_TRUE(comesToLog(desk, "Sysex request failed: of the service (Extension not found.)"));
        for (const std::string& line : standin::loggedLines())
            EXPECT_EQ(line.find("of another domain"), std::string::npos) << line;
    });
}

TEST_F(TheApplication, ReplacesAnExtensionAndSaysWhichByWhich) {
    run([this](Desk& desk) {
        desk.click("Activate Camera Driver");
        ASSERT_TRUE(isSubmitted(desk, "activation " + camera));
        service_.askReplacement(service_.latest("activation " + camera),
                                standin::makeProperties(camera.c_str(), "2.0", "2004"),
                                standin::makeProperties(camera.c_str(), "2.1", "2105"));
        ASSERT_TRUE(comesToLog(desk, "Sysex replacement request: <" + camera + " 2.0/2004> <" + camera + " 2.1/2105>"));
        constexpr long replace = 1;
        EXPECT_THAT(service_.replacementAnswers(), testing::ElementsAre(replace));
    });
}

TEST_F(TheApplication, TellsThatTheCameraNeedsARestart) {
    run([this](Desk& desk) {
        desk.click("Activate Camera Driver");
        ASSERT_TRUE(isSubmitted(desk, "activation " + camera));
        constexpr long afterRestart = 1;
        service_.finish(service_.latest("activation " + camera), afterRestart);
        ASSERT_TRUE(isSubmitted(desk, "properties " + camera, 2));
        found({.identifier = camera});
        EXPECT_TRUE(comesToShow(desk, "Need reboot"));
    });
}

TEST_F(TheApplication, OffersAnUpgradeOfAnOlderBuildAndActivatesIt) {
    run([this](Desk& desk) {
        found(enabled(camera, "2004"));
        ASSERT_TRUE(comesToHave(desk, "Upgrade Camera Driver"));
        desk.click("Upgrade Camera Driver");
        EXPECT_TRUE(isSubmitted(desk, "activation " + camera));
    });
}

TEST_F(TheApplication, OffersNoUpgradeOfItsOwnBuild) {
    run([this](Desk& desk) {
        found(enabled(camera));
        ASSERT_TRUE(comesToShow(desk, "Enabled"));
        EXPECT_FALSE(desk.has("Upgrade Camera Driver"));
        EXPECT_FALSE(desk.has("Activate Camera Driver"));
    });
}

TEST_F(TheApplication, OutlivesAnswersWithoutTexts) {
    run([this](Desk& desk) {
        const auto nothing = standin::makeProperties(nullptr, nullptr, nullptr);
        service_.found(service_.latest("properties " + camera), standin::makeArray({nothing}));
        failWith(desk, standin::serviceDomain(), 8, nullptr);
        found(enabled(network));
        EXPECT_TRUE(comesToShow(desk, "Enabled"));
    });
}

TEST_F(TheApplication, StopsForABuildThatIsANumber) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(execl(BROKEN_APPLICATION, BROKEN_APPLICATION, nullptr), testing::KilledBySignal(SIGABRT),
                "CFBundleVersion is not a text");
}

} // namespace
} // namespace macos_tests
