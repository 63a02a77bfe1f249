// How a scenario is written, and what is said of one that cannot be understood.

#include "tests/simulator/player/Played.h"

#include <algorithm>

namespace simulator::player {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

Scenario read(std::string_view text) {
    return readScenario(text, "a.scenario", SCENARIOS);
}

// Lines and words ----------------------------------------------------------------------------------------------------

TEST(AScenarioThatIsRead, KnowsTheLineOfEachStep) {
    const Scenario scenario = read("# Why\n\nrestart\n  quit  \"Driver Manager\" # now\r\nreset");
    ASSERT_EQ(scenario.size(), 3U);
    EXPECT_EQ(scenario[0].line, 3U);
    EXPECT_EQ(scenario[1].line, 4U);
    EXPECT_EQ(scenario[1].text, "quit  \"Driver Manager\"");
    EXPECT_EQ(scenario[2].text, "reset");
}

TEST(AScenarioThatIsRead, MayBeginWithAByteOrderMark) {
    EXPECT_EQ(read("\xEF\xBB\xBFrestart\n").at(0).text, "restart");
    EXPECT_EQ(read("\xEF\xBB\xBF# Why\nrestart\n").at(0).line, 2U);
}

/// The words of a line are seen in what a failure is ordered to say.
std::string described(const std::string& words) {
    const std::string text = "fault next any 8 " + words + "\nproperties com.x\nexpect nothing\n";
    const std::string there = played(text);
    const auto begin = there.find("failed 8 ") + 9;
    return there.substr(begin, there.rfind(" to com.x") - begin);
}

TEST(TheWordsOfALine, AreDividedByBlanksAndHeldTogetherByQuotes) {
    EXPECT_EQ(described("\t one \r"), R"("one")");
    EXPECT_EQ(described("one # two"), R"("one")");
    EXPECT_EQ(described("C#"), R"("C#")");
    EXPECT_EQ(described(R"("a # b")"), R"("a # b")");
    EXPECT_EQ(described(R"("")"), R"("")");
    EXPECT_EQ(described(R"("a \"b\" \\ \c")"), R"("a \"b\" \\ \\c")");
    EXPECT_EQ(described("2,1"), R"("2,1")");
    EXPECT_EQ(described("\"--domain\""), R"("--domain")");
}

TEST(TheWordsOfALine, MeanNothingInQuotes) {
    EXPECT_EQ(played("bundle \"as\" at /Applications/as.app\nproperties com.x as \"as\"\nexpect found none as \"as\""),
              "as it says");
    EXPECT_EQ(played("properties com.x called \"to\"\nexpect found none to \"to\""), "as it says");
}

TEST(TheWordsOfAFault, MayEndWithTheDomainWithoutItsOption) {
    EXPECT_EQ(described("why D"), R"("why" domain "D")");
    EXPECT_EQ(described("why --domain D"), R"("why" domain "D")");
    EXPECT_EQ(described("why --domain"), described("why"));
}

// What lies on the disk ----------------------------------------------------------------------------------------------

class TheDiskOfAScenario : public testing::Test {
protected:
    /// The application after these lines.
    const BundleOnDisk& after(const std::string& lines, const std::string& application = sampleName) {
        EXPECT_EQ(played(lines, *mac), "as it says");
        return mac->bundleOf(application);
    }
    /// The last of its extensions, by file name, after it carries this.
    const ExtensionOnDisk& carried(const std::string& words) { return after("carry z." + words).extensions.back(); }

    static constexpr auto sampleName = "Driver Manager";
    std::unique_ptr<Mac> mac = newCoreMac();
};

TEST_F(TheDiskOfAScenario, HoldsAnApplicationInTheApplicationsFolderUnlessToldOtherwise) {
    const BundleOnDisk& plain = after("bundle Other", "Other");
    EXPECT_EQ(plain.path, "/Applications/Other.app");
    EXPECT_TRUE(plain.mayInstallExtensions);
    const BundleOnDisk& other = after("bundle O at /tmp/O.app identifier com.o team T without entitlement", "O");
    EXPECT_EQ(other.path, "/tmp/O.app");
    EXPECT_EQ(other.identifier, "com.o");
    EXPECT_EQ(other.team, "T");
    EXPECT_FALSE(other.mayInstallExtensions);
}

TEST_F(TheDiskOfAScenario, HoldsASoundExtensionUnlessToldOtherwise) {
    const ExtensionOnDisk extension = carried("dext 1.0/100");
    EXPECT_EQ(extension.fileName, "z.dext");
    EXPECT_EQ(extension.identifier, "z");
    EXPECT_EQ(textOf(extension.version), "1.0/100");
    EXPECT_EQ(extension.category, Category::driver);
    EXPECT_EQ(extension.team, "KELVRA0001");
    EXPECT_TRUE(extension.hasUsageDescription);
    EXPECT_EQ(after("bundle Other\ncarry z.dext 1/1 in Other", "Other").extensions.size(), 1U);
}

TEST_F(TheDiskOfAScenario, HoldsAnExtensionOfEachCategory) {
    EXPECT_EQ(carried("systemextension 1/1").category, Category::camera);
    EXPECT_EQ(carried("systemextension 1/1 category cmio").category, Category::camera);
    EXPECT_EQ(carried("systemextension 1/1 category network_extension").category, Category::network);
    EXPECT_EQ(carried("systemextension 1/1 category endpoint_security").category, Category::endpointSecurity);
    EXPECT_EQ(carried("systemextension 1/1 category unknown").category, std::nullopt);
    EXPECT_EQ(carried("systemextension 1/1 category unknown category cmio").category, Category::camera);
    EXPECT_EQ(carried("kext 1/1").category, std::nullopt);
}

// What applications hear ---------------------------------------------------------------------------------------------

TEST(AnError, SaysWhy) {
    EXPECT_EQ(played(R"(
activate com.kelvra.ip-camera.cmio
expect needs approval
deactivate com.kelvra.ip-camera.cmio
expect failed 12 saying "A later request for the same extension replaced this one."
refuse com.kelvra.ip-camera.cmio
expect failed 13 saying "An administrator did not authorize the request."
activate com.kelvra.ip-camera.cmio
expect needs approval
deny com.kelvra.ip-camera.cmio
expect failed 11 saying "The request was canceled."
deactivate com.kelvra.ip-camera.cmio
expect failed 4 saying "The extension was not found in the application."
)"),
              "as it says");
}

// What is not understood ---------------------------------------------------------------------------------------------

std::string complaintAbout(std::string_view text) {
    try {
        read(text);
    } catch (const ScenarioError& error) {
        return error.what();
    }
    return "none";
}

/// A line, and what is said of it. With a "..." at the end, that is how it begins.
struct Complaint {
    const char* line;
    const char* text;
};

const Complaint complaints[]{
    {"allow", "missing extension identifier; usage: allow ID"},
    {"restart now", "unexpected \"now\"; usage: restart"},
    {"alow com.x", "unknown verb \"alow\"; use one of: bundle, carry, update, move, damage, activate, deactivate, "
                   "properties, answer, quit, ..."},
    {"quit \"Driver", "missing closing quote"},
    {"quit \"Driver\\\"", "missing closing quote"},
    {"activate com.x as Other", "unknown application \"Other\"; use one of: Driver Manager; usage: activate ID "
                                "[as NAME] [called REQUEST] [answering replace|cancel|later]"},
    {"switch denial", "missing value of denial; use one of: error, silence; usage: switch NAME VALUE | [NAME] --reset"},
    {"clock", "unknown verb \"clock\"; use one of: ..."},
    {"fault list", "expected \"next\", not \"list\"; usage: ..."},
    {"expect", "missing expectation; use one of: needs, asked, finished, failed, found, nothing..."},
    {"expect silence", "unknown expectation \"silence\"; use one of: needs, asked, finished, failed, found..."},
    {"expect request com.x", "missing stage; use one of: replacement, user..."},
    {"expect request com.x asleep", "unknown stage \"asleep\"; use one of..."},
    {"expect copy com.x 1/1 active", "unknown state \"active\"; use one of: preparing, waiting, enabled, disabled..."},
    {"expect copies com.x 1/1 staging,", "missing version..."},
    {"expect copies com.x 1/1,", "missing state..."},
    {"expect finished 2", "unknown result \"2\"; use one of: 0, 1; usage: expect finished 0|1 [to REQUEST] [as NAME]"},
    {"expect finished -1", "unknown result \"-1\"; use one of: 0, 1..."},
    {"expect found 2105 enabled", "\"2105\" is not a version; an example is 2.1/2105..."},
    {"expect requests -1", "a number of requests is not negative..."},
    {"fault next any", "missing fault; usage: fault..."},
    {"applications /A \"\"", "\"\" is not a folder; usage: applications FOLDER..."},
    {"move \"Driver Manager\" to Desktop", "\"Desktop\" is not an absolute path..."},
    {"bundle Other at \"\"", "\"\" is not an absolute path..."},
    {"carry com 1/1", "\"com\" is not an extension file name..."},
    {"carry com.x.dext 1/1 category cmio", "only a .systemextension has a category..."},
};

TEST(AComplaint, NamesTheLineAndWhatWouldBeRight) {
    for (const Complaint& complaint : complaints) {
        std::string expected = std::string{"a.scenario:2: "} + complaint.text;
        const bool isBeginning = expected.substr(expected.size() - 3) == "...";
        if (isBeginning) expected.resize(expected.size() - 3);
        std::string said = complaintAbout(std::string{"restart\n"} + complaint.line + "\nbundle Other\n");
        if (isBeginning) said.resize(std::min(said.size(), expected.size()));
        EXPECT_EQ(said, expected) << complaint.line;
    }
}

const char* const linesThatAreComplete[]{
    "restart",
    "reset --all",
    "profile allow-team.mobileconfig",
    "fault next any 8 text --domain D",
    "update \"Driver Manager\" to 1/1",
    "quit \"Driver Manager\"",
    "expect needs approval",
    "expect found none",
    "expect nothing",
    "expect copies com.x 1/1 activated enabled",
    "expect request com.x user",
};

TEST(AComplaint, IsMadeOfAWordTooMany) {
    for (const std::string line : linesThatAreComplete)
        EXPECT_THAT(complaintAbout(line + " more"), HasSubstr(": unexpected \"more\"; usage: ")) << line;
    EXPECT_THAT(complaintAbout("reset --all --all"), HasSubstr(": unexpected \"--all\"; usage: "));
}

TEST(AComplaint, IsMadeOfAProfileThatCannotBeRead) {
    EXPECT_THAT(complaintAbout("profile none.mobileconfig"), HasSubstr("none.mobileconfig\" cannot be read"));
}

TEST(AComplaint, IsMadeOfAScenarioThatIsNone) {
    EXPECT_EQ(complaintAbout("# nothing\n"), "a.scenario: the scenario is empty");
    EXPECT_EQ(complaintAbout(std::string_view{"\xFF\xFEr\0e\0", 6}), "a.scenario: not a text in UTF-8");
}

TEST(AComplaint, IsMadeOfAFileThatCannotBeRead) {
    const auto complaintAboutFile = [](const std::string& path) -> std::string {
        try {
            readScenarioFile(path);
        } catch (const ScenarioError& error) {
            return error.what();
        }
        return "none";
    };
    EXPECT_EQ(complaintAboutFile("/nowhere.scenario"), "/nowhere.scenario: no such file");
    EXPECT_EQ(complaintAboutFile("/"), "/: is a folder");
    EXPECT_EQ(complaintAboutFile("/proc/self/mem"), "/proc/self/mem: cannot be read");
}

TEST(TheGrammar, HasALineForEachVerbAndEachExpectation) {
    EXPECT_THAT(grammar(), StartsWith("bundle NAME "));
    EXPECT_THAT(grammar(), HasSubstr("\nrestart\n"));
    EXPECT_THAT(grammar(), HasSubstr("\nexpect finished 0|1 [to REQUEST] [as NAME]\n"));
}

} // namespace
} // namespace simulator::player
