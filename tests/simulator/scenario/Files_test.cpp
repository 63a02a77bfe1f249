// The scenarios that come with the simulator, as files. Whether they go as they say is a test each, beside this one.

#include "simulator/scenario/Scenario.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace simulator::scenario {
namespace {

using testing::StartsWith;

std::vector<std::filesystem::path> files() {
    std::vector<std::filesystem::path> found;
    for (const auto& entry : std::filesystem::directory_iterator{SCENARIOS}) {
        if (entry.path().extension() == ".scenario") found.push_back(entry.path());
    }
    return found;
}

std::string firstLineOf(const std::filesystem::path& path) {
    std::ifstream file{path};
    std::string line;
    std::getline(file, line);
    return line;
}

/// A problem that people have with system extensions: the file that shows it, and how the lines begin that do, in
/// order.
struct Problem {
    std::string file;
    std::vector<std::string> lines;
};

const std::vector<Problem>& problemsOfTheField() {
    static const std::vector<Problem> problems{
        {"waiting-for-ever", {"activate", "expect needs approval", "advance 60d", "expect nothing"}},
        {"denied", {"activate", "expect needs approval", "deny", "expect failed 11"}},
        {"upgrade-until-restart",
         {"expect asked to replace", "expect finished 1",
          "expect copies com.kelvra.driverkit.usb-to-poe 2.0/2004 terminating for upgrade via delegate, 2.1/2105",
          "restart", "expect copies com.kelvra.driverkit.usb-to-poe 2.1/2105 activated enabled"}},
        {"several-dying-copies",
         {"expect found 2.0/2004 uninstalling, 2.1/2105 uninstalling, 2.1/2105 enabled", "restart"}},
        {"two-requests-at-once",
         {"activate com.kelvra.ip-camera.cmio called first", "activate com.kelvra.ip-camera.cmio called second",
          "expect failed 12 to first", "expect finished 0 to second"}},
        {"removal-refused", {"deactivate", "refuse", "expect failed 13", "expect copies"}},
        {"forbidden-by-profile", {"profile", "activate", "expect failed 10"}},
        {"wrong-folder", {"move", "activate", "expect failed 3"}},
        {"damaged-extension", {"damage", "activate", "expect failed 8"}},
        {"no-answer", {"fault next activate silent", "activate", "advance 1d", "expect nothing"}},
        {"service-crash", {"fault next activate crash", "activate", "expect nothing", "expect requests none"}},
    };
    return problems;
}

/// The first of the lines that the scenario does not come to; empty if it comes to all of them.
std::string missingIn(const Scenario& scenario, const std::vector<std::string>& lines) {
    auto next = lines.begin();
    for (const Step& step : scenario.steps) {
        if (next != lines.end() && step.text.rfind(*next, 0) == 0) ++next;
    }
    return next == lines.end() ? std::string{} : *next;
}

TEST(EachScenarioFile, BeginsWithWhatItIsAbout) {
    ASSERT_FALSE(files().empty());
    for (const auto& path : files())
        EXPECT_THAT(firstLineOf(path), StartsWith("# ")) << path;
}

TEST(EachScenarioFile, EndsWithSomethingToBeSeen) {
    for (const auto& path : files()) {
        const Scenario scenario = readScenarioFile(path.string());
        EXPECT_TRUE(std::holds_alternative<Expectation>(scenario.steps.back().action)) << path;
    }
}

TEST(TheScenarioFiles, HaveOneForEachErrorCode) {
    const auto isFor = [](const std::filesystem::path& path, const std::string& code) {
        return path.filename().string().rfind("error-" + code + "-", 0) == 0;
    };
    for (int code = 1; code <= 13; ++code) {
        const std::string digits = std::to_string(100 + code).substr(1);
        const auto all = files();
        EXPECT_EQ(std::count_if(all.begin(), all.end(), [&](const auto& path) { return isFor(path, digits); }), 1)
            << digits;
    }
}

TEST(TheScenarioFiles, HaveOneForEachProblemOfTheField) {
    for (const auto& [file, lines] : problemsOfTheField()) {
        const Scenario scenario = readScenarioFile(std::string{SCENARIOS} + "/" + file + ".scenario");
        EXPECT_EQ(missingIn(scenario, lines), "") << file;
    }
}

TEST(TheGrammar, HasALineForEachVerbAndEachExpectation) {
    EXPECT_THAT(grammar(), StartsWith("bundle NAME "));
    EXPECT_THAT(grammar(), testing::HasSubstr("\nrestart\n"));
    EXPECT_THAT(grammar(), testing::HasSubstr("\nexpect finished 0|1 [to REQUEST] [as NAME]\n"));
}

} // namespace
} // namespace simulator::scenario
