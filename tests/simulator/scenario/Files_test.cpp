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

TEST(TheGrammar, HasALineForEachVerbAndEachExpectation) {
    EXPECT_THAT(grammar(), StartsWith("bundle NAME "));
    EXPECT_THAT(grammar(), testing::HasSubstr("\nrestart\n"));
    EXPECT_THAT(grammar(), testing::HasSubstr("\nexpect finished 0|1 [to REQUEST] [as NAME]\n"));
}

} // namespace
} // namespace simulator::scenario
