#include "tests/simulator/player/Played.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace simulator::player {
namespace {

using testing::StartsWith;

// The scenarios that come with the simulator -------------------------------------------------------------------------

std::vector<std::string> scenarioFiles() {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator{SCENARIOS})
        if (entry.path().extension() == ".scenario") found.push_back(entry.path().string());
    std::sort(found.begin(), found.end());
    return found;
}

std::string stemOf(const std::string& path) {
    return std::filesystem::path{path}.stem().string();
}

class EachScenarioFile : public testing::TestWithParam<std::string> {};

TEST_P(EachScenarioFile, GoesAsItSays) {
    const auto mismatch = play(readScenarioFile(GetParam()), *newCoreMac());
    EXPECT_FALSE(mismatch) << GetParam() << ":" << mismatch->line << ": " << mismatch->text;
}

INSTANTIATE_TEST_SUITE_P(, EachScenarioFile, testing::ValuesIn(scenarioFiles()), [](const auto& which) {
    std::string name = stemOf(which.param);
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

TEST(TheScenarioFiles, BeginWithWhatTheyAreAboutAndEndWithSomethingToBeSeen) {
    ASSERT_FALSE(scenarioFiles().empty());
    for (const std::string& path : scenarioFiles()) {
        std::ifstream file{path};
        std::string line;
        std::getline(file, line);
        EXPECT_THAT(line, StartsWith("# ")) << path;
        EXPECT_THAT(readScenarioFile(path).back().text, StartsWith("expect ")) << path;
    }
}

/// Each problem that people have with system extensions has a file that shows it.
TEST(TheScenarioFiles, HaveOneForEachProblemOfTheField) {
    const auto all = scenarioFiles();
    for (const std::string name :
         {"waiting-for-ever", "denied", "upgrade-until-restart", "several-dying-copies", "two-requests-at-once",
          "removal-refused", "forbidden-by-profile", "wrong-folder", "damaged-extension", "no-answer", "service-crash"})
        EXPECT_EQ(std::count(all.begin(), all.end(), std::string{SCENARIOS} + "/" + name + ".scenario"), 1) << name;
}

// What does not ------------------------------------------------------------------------------------------------------

/// What comes before, a line that does not go as it says, and what is there instead.
struct Wrong {
    std::string before;
    std::string line;
    std::string there;
};

const std::string activated = "switch authorization granted\nactivate CAMERA\nexpect needs approval\n"
                              "allow CAMERA\nexpect finished 0\n";
const std::string asked = "install CAMERA 2.0 2004\nactivate CAMERA\n";
const std::string heardQuestion = "Driver Manager heard asked to replace 2.0/2004 by 2.1/2105 to CAMERA";
const std::string failed = "fault next any 8 \"bad seal\"\nactivate CAMERA\n";
const std::string heardFailure = "Driver Manager heard failed 8 \"bad seal\" to CAMERA";
const std::string looked = activated + "properties CAMERA\n";
const std::string heardCopies = "Driver Manager heard found 2.1/2105 enabled to CAMERA";
const std::string waiting = "activate CAMERA\nexpect needs approval\n";
const std::string copiesThere = "the copies of CAMERA are: 2.1/2105 activated enabled";
const std::string requestsThere = "the open requests are: CAMERA user";

const Wrong wrongs[]{
    {"", "expect needs approval", "Driver Manager heard nothing"},
    {"activate CAMERA\n", "expect nothing", "Driver Manager heard needs approval to CAMERA"},
    {"activate CAMERA\n", "expect finished 0", "Driver Manager heard needs approval to CAMERA"},
    {asked, "expect asked to replace 2.0/2003 by 2.1/2105", heardQuestion},
    {asked, "expect asked to replace 2.0/2004 by 2.0/2105", heardQuestion},
    {asked + "expect asked to replace 2.0/2004 by 2.1/2105\n", "expect finished 1",
     "Driver Manager heard finished 0 to CAMERA"},
    {failed, "expect failed 9", heardFailure},
    {failed, "expect failed 8 saying other", heardFailure},
    {failed, "expect failed 8 without description", heardFailure},
    {failed, "expect failed 8 domain D", heardFailure},
    {"fault next any 8 --domain D\nproperties com.x\n", "expect failed 8",
     "Driver Manager heard failed 8 \"\" domain \"D\" to com.x"},
    {looked, "expect found 2.1/2105 waiting", heardCopies},
    {looked, "expect found 2.1/2106 enabled", heardCopies},
    {looked, "expect found none", heardCopies},
    {looked, "expect found 2.1/2105 enabled, 2.1/2105 enabled", heardCopies},
    {"properties com.x called first\n", "expect found none to second", "Driver Manager heard found none to first"},
    {"bundle Other\nproperties com.x as Other\n", "expect nothing as Other", "Other heard found none to com.x"},
    {activated, "expect copies CAMERA none", copiesThere},
    {activated, "expect copies CAMERA 2.1/2105 activated disabled", copiesThere},
    {activated, "expect copy CAMERA 2.1/2105 activated disabled", copiesThere},
    {activated, "expect copy com.x 2.1/2105 activated enabled", "the copies of com.x are: none"},
    {"install CAMERA 2 0 uninstalling\ninstall CAMERA 1 1 waiting\n",
     "expect copies CAMERA 1/1 activated waiting for user, 2/0 terminated waiting to uninstall on reboot",
     "the copies of CAMERA are: 2/0 terminated waiting to uninstall on reboot, 1/1 activated waiting for user"},
    {waiting, "expect requests none", requestsThere},
    {waiting, "expect requests 2", requestsThere},
    {waiting, "expect request CAMERA silent", requestsThere},
    {"", "expect request com.x user", "the open requests are: none"},
    {"", "allow CAMERA", "CAMERA: no copy is waiting for approval"},
    {"", "allow com.x", "com.x: no such extension"},
    {"", "start", "no command to test; use: sysextctl play FILE -- COMMAND"},
    {"stop\n", "expect exit 0", "no command to test; use: sysextctl play FILE -- COMMAND"},
    {"", "answer com.x replace", "no question about com.x is open"},
    {"", "damage com.x.dext", "Driver Manager carries no com.x.dext"},
    {"", "profile plain-road.scenario", "the profile is no property list"},
};

TEST(AMismatch, IsFoundInTheFirstLineThatDoesNotGoAsItSays) {
    for (const Wrong& wrong : wrongs) {
        const auto line = 1 + std::count(wrong.before.begin(), wrong.before.end(), '\n');
        std::string expected = std::to_string(line) + ": \"" + wrong.line + "\": " + wrong.there;
        replaceEach(expected, "CAMERA", "com.kelvra.ip-camera.cmio");
        EXPECT_EQ(played(wrong.before + wrong.line + "\nallow com.x\n"), expected);
    }
}

TEST(AMismatch, IsFoundAtTheLastLineWhereNoLineExpectsAnAnswer) {
    EXPECT_EQ(played("activate CAMERA\nrestart\n# The end\n"),
              "2: no line expects what follows: Driver Manager heard needs approval to com.kelvra.ip-camera.cmio");
}

} // namespace
} // namespace simulator::player
