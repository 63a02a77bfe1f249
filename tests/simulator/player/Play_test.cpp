#include "tests/simulator/player/Played.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace simulator::player {
namespace {

using testing::HasSubstr;
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
    CoreMac mac;
    const auto mismatch = play(readScenarioFile(GetParam()), mac);
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

TEST(TheScenarioFiles, HaveOneForEachErrorCode) {
    const auto all = scenarioFiles();
    for (int code = 1; code <= 13; ++code) {
        const std::string prefix = "error-" + std::to_string(100 + code).substr(1) + "-";
        const auto isFor = [&](const std::string& path) { return stemOf(path).rfind(prefix, 0) == 0; };
        EXPECT_EQ(std::count_if(all.begin(), all.end(), isFor), 1) << prefix;
    }
}

/// A problem that people have with system extensions: the file that shows it, and how the lines begin that do, in
/// order.
struct Problem {
    std::string file;
    std::vector<std::string> lines;
};

const Problem problemsOfTheField[]{
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

TEST(TheScenarioFiles, HaveOneForEachProblemOfTheField) {
    for (const auto& [file, lines] : problemsOfTheField) {
        auto next = lines.begin();
        for (const Step& step : readScenarioFile(std::string{SCENARIOS} + "/" + file + ".scenario"))
            if (next != lines.end() && step.text.rfind(*next, 0) == 0) ++next;
        EXPECT_TRUE(next == lines.end()) << file << " does not come to " << *next;
    }
}

// What goes as it says -----------------------------------------------------------------------------------------------

struct Playable {
    const char* name;
    const char* scenario;
};

void PrintTo(const Playable& playable, std::ostream* out) {
    *out << playable.name;
}

const Playable playables[]{
    {"AnswersTheQuestionWithReplace", R"(install CAMERA 2.0 2004
activate CAMERA
expect asked to replace 2.0/2004 by 2.1/2105
expect finished 0)"},
    {"AnswersTheQuestionAsItIsTold", R"(install CAMERA 2.0 2004
activate CAMERA answering cancel
expect asked to replace 2.0/2004 by 2.1/2105
expect failed 11)"},
    {"AnswersTheQuestionLater", R"(install CAMERA 2.0 2004
activate CAMERA answering later
expect asked to replace 2.0/2004 by 2.1/2105
answer CAMERA replace
expect finished 0)"},
    {"TellsRequestsOfOneExtensionApart", R"(activate CAMERA called first
activate CAMERA called second
expect needs approval to first
expect failed 12 to first
expect needs approval to second)"},
    {"KeepsTheAnswersOfApplicationsApart", R"(bundle Other
activate CAMERA as Other
activate CAMERA
expect needs approval
expect nothing as "Driver Manager"
expect failed 4 as Other)"},
    {"ReadsTheProfilesBesideIt", R"(profile allow-team.mobileconfig
activate CAMERA
expect finished 0)"},
    {"EndsEveryApplicationWithARestart", R"(activate CAMERA
expect needs approval
restart
allow CAMERA
expect nothing)"},
    {"EndsAnApplicationThatQuitsOrWhoseFilesChange", R"(activate CAMERA
expect needs approval
quit "Driver Manager"
expect requests none
activate CAMERA
expect needs approval
update "Driver Manager" to 2.2/2206
expect requests none)"},
    {"SeesACopyAmongOthers", R"(install CAMERA 2.0 2004 uninstalling
install CAMERA 2.1 2105
expect copy CAMERA 2.0/2004 terminated waiting to uninstall on reboot
expect copies CAMERA 2.0/2004 terminated waiting to uninstall on reboot, 2.1/2105 activated enabled)"},
    {"SeesAFailureWithOrWithoutItsDescription", R"(fault next any 8 "bad \"seal\""
properties CAMERA
expect failed 8 saying "bad \"seal\""
fault next any 8 "bad seal" --domain D
properties CAMERA
expect failed 8 domain D
fault next any 8
properties CAMERA
expect failed 8 without description)"},
};

class AScenario : public testing::TestWithParam<Playable> {};

TEST_P(AScenario, GoesAsItSays) {
    EXPECT_EQ(played(GetParam().scenario), "as it says");
}

INSTANTIATE_TEST_SUITE_P(That, AScenario, testing::ValuesIn(playables),
                         [](const auto& which) { return which.param.name; });

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
    {"", "allow CAMERA", "CAMERA: nothing waits for approval"},
    {"", "allow com.x", "com.x: no such extension"},
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
