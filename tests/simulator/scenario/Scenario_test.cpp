#include "simulator/scenario/Scenario.h"

#include "simulator/scenario/ScenarioError.h"

namespace simulator::scenario {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

Scenario read(std::string_view text) {
    return readScenario(text, "a.scenario", SCENARIOS);
}

/// The step of a scenario of one line, as the type that it should be.
template <typename Expected>
Expected only(std::string_view line) {
    return std::get<Expected>(read(line).steps.at(0).action);
}

template <typename Expected>
Expected deedIn(std::string_view line) {
    return std::get<Expected>(only<Deed>(line));
}

std::string complaintAbout(std::string_view text) {
    try {
        read(text);
    } catch (const ScenarioError& error) {
        return error.what();
    }
    return "none";
}

// What is read -------------------------------------------------------------------------------------------------------

TEST(AScenario, KnowsTheLineOfEachStep) {
    const Scenario scenario = read("# Why\n\nrestart\n  reset # begin anew\r\n");
    ASSERT_EQ(scenario.steps.size(), 2U);
    EXPECT_EQ(scenario.steps[0].line, 3U);
    EXPECT_EQ(scenario.steps[1].line, 4U);
    EXPECT_EQ(scenario.steps[1].text, "reset");
}

TEST(AScenario, MayBeginWithAByteOrderMark) {
    EXPECT_EQ(read("\xEF\xBB\xBFrestart\n").steps.at(0).text, "restart");
    EXPECT_EQ(read("\xEF\xBB\xBF# Why\nrestart\n").steps.at(0).line, 2U);
}

TEST(AScenario, AsksAsTheSampleApplicationUnlessToldOtherwise) {
    const auto ask = only<Ask>("activate com.x");
    EXPECT_EQ(ask.application, "Driver Manager");
    EXPECT_EQ(ask.kind, RequestKind::activation);
    EXPECT_EQ(ask.identifier, "com.x");
    EXPECT_EQ(ask.request, "com.x");
    EXPECT_EQ(ask.reply, Ask::Reply::replace);
}

TEST(AScenario, AsksAsAnotherApplicationAndGivesTheRequestAName) {
    const Scenario scenario = read("bundle Other\ndeactivate com.x as Other called first\n");
    const auto ask = std::get<Ask>(scenario.steps[1].action);
    EXPECT_EQ(ask.application, "Other");
    EXPECT_EQ(ask.kind, RequestKind::deactivation);
    EXPECT_EQ(ask.request, "first");
}

TEST(AScenario, SaysHowAnActivationAnswersTheQuestion) {
    EXPECT_EQ(only<Ask>("activate com.x answering cancel").reply, Ask::Reply::cancel);
    EXPECT_EQ(only<Ask>("activate com.x answering later").reply, Ask::Reply::later);
    EXPECT_FALSE(only<AnswerQuestion>("answer com.x cancel").replace);
}

TEST(AScenario, PutsAnApplicationInTheApplicationsFolderUnlessToldOtherwise) {
    const auto plain = only<PutApplication>("bundle Other");
    EXPECT_EQ(plain.bundle.path, "/Applications/Other.app");
    EXPECT_TRUE(plain.bundle.mayInstallExtensions);
    const auto other = only<PutApplication>("bundle Other at /tmp/O.app identifier com.o team T without entitlement");
    EXPECT_EQ(other.bundle.path, "/tmp/O.app");
    EXPECT_EQ(other.bundle.identifier, "com.o");
    EXPECT_EQ(other.bundle.team, "T");
    EXPECT_FALSE(other.bundle.mayInstallExtensions);
}

TEST(AScenario, CarriesASoundExtensionUnlessToldOtherwise) {
    const auto carry = only<Carry>("carry com.x.dext 1.0/100");
    EXPECT_EQ(carry.application, "Driver Manager");
    EXPECT_EQ(carry.extension.fileName, "com.x.dext");
    EXPECT_EQ(carry.extension.identifier, "com.x");
    EXPECT_EQ(carry.extension.shortVersion, "1.0");
    EXPECT_EQ(carry.extension.version, "100");
    EXPECT_EQ(carry.extension.category, Category::driver);
    EXPECT_TRUE(carry.extension.hasUsageDescription);
    EXPECT_TRUE(carry.extension.sealMatches);
    EXPECT_TRUE(carry.isSealed);
}

TEST(AScenario, CarriesAnExtensionThatIsWrongInAnyWay) {
    EXPECT_FALSE(only<Carry>("carry com.x.dext 1/1 damaged").extension.sealMatches);
    EXPECT_FALSE(only<Carry>("carry com.x.dext 1/1 without seal").isSealed);
    EXPECT_EQ(only<Carry>("carry com.x.dext 1/1 without identifier").extension.identifier, "");
    EXPECT_FALSE(only<Carry>("carry com.x.dext 1/1 without usage-description").extension.hasUsageDescription);
    EXPECT_EQ(only<Carry>("carry com.x.dext 1/1 identifier com.y").extension.identifier, "com.y");
    EXPECT_EQ(only<Carry>("carry com.x.systemextension 1/1 category unknown").extension.category, std::nullopt);
    EXPECT_EQ(only<Carry>("carry com.x.systemextension 1/1 service S").extension.machServiceName, "S");
    EXPECT_EQ(only<Carry>("carry com.x.dext 1/1 team T").extension.team, "T");
}

TEST(AScenario, KnowsEveryCategory) {
    EXPECT_EQ(only<Carry>("carry com.x.systemextension 1/1").extension.category, Category::camera);
    EXPECT_EQ(only<Carry>("carry com.x.systemextension 1/1 category network_extension").extension.category,
              Category::network);
    EXPECT_EQ(only<Carry>("carry com.x.systemextension 1/1 category endpoint_security").extension.category,
              Category::endpointSecurity);
    EXPECT_EQ(only<Carry>("carry com.x.kext 1/1").extension.category, std::nullopt);
}

TEST(AScenario, UpdatesMovesAndDamagesAnApplication) {
    EXPECT_EQ(only<Update>("update \"Driver Manager\" to 2.2/2206").version, (Version{"2.2", "2206"}));
    EXPECT_EQ(only<Move>("move \"Driver Manager\" to /Users/me/D.app").path, "/Users/me/D.app");
    EXPECT_EQ(only<Damage>("damage com.x.dext").fileName, "com.x.dext");
    EXPECT_EQ(only<Quit>("quit \"Driver Manager\"").application, "Driver Manager");
}

TEST(AScenario, KnowsTheVerbsOfThePerson) {
    using What = ByPerson::What;
    const std::vector<std::pair<std::string, What>> verbs{{"allow", What::allow},         {"deny", What::deny},
                                                          {"authorize", What::authorize}, {"refuse", What::refuse},
                                                          {"disable", What::disable},     {"enable", What::enable}};
    for (const auto& [verb, what] : verbs) {
        EXPECT_EQ(deedIn<ByPerson>(verb + " com.x").what, what) << verb;
        EXPECT_EQ(deedIn<ByPerson>(verb + " com.x").identifier, "com.x") << verb;
    }
}

TEST(AScenario, KnowsTheVerbsOfTheMachine) {
    deedIn<Restart>("restart");
    deedIn<Reset>("reset");
    EXPECT_EQ(deedIn<Install>("install com.x 2.0 2004").version, (Version{"2.0", "2004"}));
    EXPECT_EQ(deedIn<Install>("install com.x 2.0 2004").condition, "enabled");
    EXPECT_EQ(deedIn<Install>("install com.x 2.0 2004 uninstalling").condition, "uninstalling");
    EXPECT_EQ(deedIn<Uninstall>("uninstall - com.x").team, "-");
    EXPECT_TRUE(deedIn<SetDeveloperMode>("developer on").on);
    EXPECT_EQ(deedIn<Advance>("advance 90s").milliseconds, 90'000);
    EXPECT_EQ(deedIn<SetSwitch>("switch denial silence").value, "silence");
}

TEST(AScenario, HoldsTheProfileThatItNames) {
    EXPECT_THAT(deedIn<SetProfile>("profile allow-team.mobileconfig").contents, HasSubstr("AllowedTeamIdentifiers"));
    EXPECT_EQ(deedIn<SetProfile>("profile --remove").contents, "");
}

TEST(AScenario, KnowsEveryFault) {
    const auto faultIn = [](const std::string& words) { return deedIn<OrderFault>("fault next " + words).fault; };
    EXPECT_EQ(faultIn("any silent").kind, Fault::Kind::silent);
    EXPECT_EQ(faultIn("any silent").request, std::nullopt);
    EXPECT_EQ(faultIn("activate hollow").kind, Fault::Kind::hollow);
    EXPECT_EQ(faultIn("activate hollow").request, RequestKind::activation);
    EXPECT_EQ(faultIn("activate noprompt").kind, Fault::Kind::noprompt);
    EXPECT_EQ(faultIn("properties crash").kind, Fault::Kind::crash);
    EXPECT_EQ(faultIn("properties crash").request, RequestKind::properties);
    EXPECT_EQ(faultIn("deactivate after 90s").milliseconds, 90'000);
    EXPECT_EQ(faultIn("deactivate after 90s").request, RequestKind::deactivation);
    EXPECT_EQ(faultIn("any 8").failure, (Failure{std::string{extensionErrorDomain}, 8, ""}));
    EXPECT_EQ(faultIn("any 8 \"bad seal\"").failure, (Failure{std::string{extensionErrorDomain}, 8, "bad seal"}));
    EXPECT_EQ(faultIn("any -4 text --domain D").failure, (Failure{"D", -4, "text"}));
    EXPECT_EQ(faultIn("any 1 --domain D").failure, (Failure{"D", 1, ""}));
}

// What is not understood ---------------------------------------------------------------------------------------------

TEST(AComplaint, NamesTheFileTheLineAndWhatWouldBeRight) {
    EXPECT_EQ(complaintAbout("# Why\nrestart\nallow\n"),
              "a.scenario:3: an extension's identifier is missing; right would be: allow ID");
}

TEST(AComplaint, ListsTheVerbsWhereThereIsNoneOfThatName) {
    EXPECT_THAT(complaintAbout("alow com.x"), StartsWith("a.scenario:1: \"alow\" is not a verb; there is bundle, "));
    EXPECT_THAT(complaintAbout("alow com.x"), HasSubstr("allow, deny"));
}

TEST(AComplaint, IsMadeOfEveryWordTooMany) {
    EXPECT_EQ(complaintAbout("restart now"), "a.scenario:1: \"now\" is too much; right would be: restart");
}

TEST(AComplaint, IsMadeOfAnApplicationThatIsNotThereYet) {
    EXPECT_THAT(complaintAbout("activate com.x as Other\nbundle Other"),
                StartsWith("a.scenario:1: \"Other\" is not an application; there is Driver Manager"));
}

TEST(AComplaint, IsMadeOfAQuoteThatIsNotClosed) {
    EXPECT_EQ(complaintAbout("quit \"Driver"), "a.scenario:1: a quote is not closed; right would be \"in quotes\"");
}

TEST(AComplaint, ListsTheWordsThatWouldFit) {
    EXPECT_THAT(complaintAbout("switch denail error"), HasSubstr("\"denail\" is not a switch; there is authorization"));
    EXPECT_THAT(complaintAbout("switch denial loud"),
                HasSubstr("\"loud\" is not a value of denial; there is error, silence"));
    EXPECT_THAT(complaintAbout("developer maybe"), HasSubstr("\"maybe\" is not a mode; there is on, off"));
    EXPECT_THAT(complaintAbout("expect silence"), HasSubstr("there is needs, asked, finished, failed, found, nothing"));
    EXPECT_THAT(complaintAbout("expect request com.x asleep"), HasSubstr("\"asleep\" is not a stage; there is"));
    EXPECT_THAT(complaintAbout("expect copy com.x 1/1 active"),
                HasSubstr("\"active\" is not a state; there is validating, staging, activated waiting for user"));
}

TEST(AComplaint, ListsTheWordsThatWouldFitWhereThereIsNone) {
    EXPECT_EQ(complaintAbout("switch denial"),
              "a.scenario:1: a value of denial is missing; there is error, silence; right would be: switch NAME VALUE");
    EXPECT_THAT(complaintAbout("expect"), HasSubstr("what may be expected is missing; there is needs, asked, "));
    EXPECT_THAT(complaintAbout("expect request com.x"), HasSubstr("a stage is missing; there is replacement, user"));
}

TEST(AComplaint, NamesTheRequestsThatAFaultCanBefall) {
    EXPECT_THAT(
        complaintAbout("fault next properties hollow"),
        HasSubstr("\"properties\" is not a kind of request that can be hollow; there is activate, deactivate, any"));
    EXPECT_THAT(complaintAbout("fault next deactivate noprompt"), HasSubstr("there is activate, any"));
    EXPECT_EQ(complaintAbout("fault next any noprompt"), "none");
}

TEST(AComplaint, ShowsWhatATimeANumberAVersionAndAPathLookLike) {
    EXPECT_THAT(complaintAbout("advance soon"),
                HasSubstr("\"soon\" is not a time; examples are 90s, 5m and 250ms; right would be: advance TIME"));
    EXPECT_THAT(complaintAbout("expect finished twice"), HasSubstr("\"twice\" is not a result"));
    EXPECT_THAT(complaintAbout("expect found 2105 enabled"),
                HasSubstr("\"2105\" is not a version; an example is 2.1/2105"));
    EXPECT_THAT(complaintAbout("move \"Driver Manager\" to Desktop"), HasSubstr("\"Desktop\" is not an absolute path"));
    EXPECT_THAT(complaintAbout("bundle Other at \"\""), HasSubstr("\"\" is not an absolute path"));
    EXPECT_THAT(complaintAbout("carry com 1/1"), HasSubstr("\"com\" is not an extension's file name"));
    EXPECT_THAT(complaintAbout("carry com.x.dext 1/1 category cmio"),
                HasSubstr("only a .systemextension has a category"));
    EXPECT_THAT(complaintAbout("fault next any loud"), HasSubstr("\"loud\" is not a fault: a code, after, silent"));
    EXPECT_THAT(complaintAbout("expect requests -1"), HasSubstr("a number of requests is not negative"));
}

TEST(AComplaint, IsMadeOfAResultThatNoRequestFinishesWith) {
    EXPECT_EQ(complaintAbout("restart\nexpect finished 2"),
              "a.scenario:2: \"2\" is not a result; there is 0, 1; "
              "right would be: expect finished 0|1 [to REQUEST] [as NAME]");
    EXPECT_THAT(complaintAbout("expect finished -1"), HasSubstr("\"-1\" is not a result; there is 0, 1"));
    EXPECT_EQ(complaintAbout("expect finished 0\nexpect finished 1"), "none");
}

TEST(AComplaint, IsMadeOfAListThatDoesNotGoOn) {
    EXPECT_THAT(complaintAbout("expect copies com.x 1/1 staging,"), HasSubstr("a version is missing"));
    EXPECT_THAT(complaintAbout("expect copies com.x 1/1,"), HasSubstr("a state is missing"));
}

TEST(AComplaint, IsMadeOfAProfileThatCannotBeRead) {
    EXPECT_THAT(complaintAbout("profile none.mobileconfig"), HasSubstr("none.mobileconfig\" cannot be read"));
}

TEST(AComplaint, IsMadeOfAScenarioWithoutASingleStep) {
    EXPECT_EQ(complaintAbout("# nothing\n"), "a.scenario: it has no step");
}

TEST(AComplaint, IsMadeOfAFileThatIsNoText) {
    EXPECT_EQ(complaintAbout(std::string_view{"\xFF\xFEr\0e\0", 6}), "a.scenario: it is no text in UTF-8");
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
    EXPECT_EQ(complaintAboutFile("/nowhere.scenario"), "/nowhere.scenario: there is no such file");
    EXPECT_EQ(complaintAboutFile("/"), "/: it is a folder");
    EXPECT_EQ(complaintAboutFile("/proc/self/mem"), "/proc/self/mem: it cannot be read");
}

} // namespace
} // namespace simulator::scenario
