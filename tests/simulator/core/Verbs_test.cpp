// The language: words, lengths of time, verbs, and the text of an answer.

#include "simulator/core/Verbs.h"
#include "tests/simulator/sample/SampleMac.h"

#include <set>
#include <sstream>

namespace simulator {
namespace {

// Lengths of time and numbers ----------------------------------------------------------------------------------------

TEST(ALengthOfTime, IsANumberWithAUnitOrInSeconds) {
    const std::map<std::string, std::int64_t> lengths{
        {"250ms", 250},    {"90s", 90'000},     {"5m", 300'000},
        {"2h", 7'200'000}, {"7d", 604'800'000}, {"1.5h", 5'400'000},
        {"3", 3'000},      {"0.25", 250},       {"0", 0},
        {"0.0004s", 0},    {"0.0005s", 1},      {"366000d", 31'622'400'000'000},
    };
    for (const auto& [text, length] : lengths)
        EXPECT_EQ(millisecondsOf(text), length) << text;
}

TEST(ALengthOfTime, IsNothingElse) {
    for (const std::string text :
         {"",   "s",      "-1s", "+1",   "1.s", ".5s", "5.",     "1s ",   " 1s",     "1 s",
          "1w", "1.5.5s", "1e3", "0x10", "nan", "inf", "\u0663", "90s\n", "366001d", "31622400000001ms"})
        EXPECT_EQ(millisecondsOf(text), std::nullopt) << text;
    EXPECT_EQ(millisecondsOf(std::string(400, '9')), std::nullopt);
}

TEST(ALengthOfTime, IsPrintedInSecondsWithThreeDecimals) {
    EXPECT_EQ(inSeconds(0), "0.000");
    EXPECT_EQ(inSeconds(7), "0.007");
    EXPECT_EQ(inSeconds(90'250), "90.250");
}

TEST(ANumber, IsWholeWithOrWithoutASign) {
    EXPECT_EQ(numberIn("8"), 8);
    EXPECT_EQ(numberIn("+8"), 8);
    EXPECT_EQ(numberIn("-4"), -4);
    EXPECT_EQ(numberIn(" 8\t"), 8);
    for (const auto* const word : {"", "+", "-", "+-8", "8x", "x8", "1.5", "9223372036854775808"})
        EXPECT_EQ(numberIn(word), std::nullopt) << word;
}

// The text of an answer ----------------------------------------------------------------------------------------------

TEST(AnAnswer, HasOneText) {
    const CopyRecord old{"com.x", "2.0", "2004", true, false, false};
    const CopyRecord waiting{"com.x", "2.1", "2105", false, true, false};
    const CopyRecord leaving{"com.x", "1.0", "1", false, false, true};
    const CopyRecord off{"com.x", "3.0", "3", false, false, false};
    EXPECT_EQ(textOf(AnswerBody{}), "nothing");
    EXPECT_EQ(textOf(NeedsApproval{}), "needs approval");
    EXPECT_EQ(textOf(Finished{1}), "finished 1");
    EXPECT_EQ(textOf(ReplacementAsked{old, waiting}), "asked to replace 2.0/2004 by 2.1/2105");
    EXPECT_EQ(textOf(FoundProperties{}), "found none");
    EXPECT_EQ(textOf(FoundProperties{{leaving, old, waiting, off}}),
              "found 1.0/1 uninstalling, 2.0/2004 enabled, 2.1/2105 waiting, 3.0/3 disabled");
    EXPECT_EQ(textOf(failureWith(8, "why")), "failed 8 \"why\"");
    EXPECT_EQ(textOf(Failure{"D", -4, "a \"b\" \\"}), R"(failed -4 "a \"b\" \\" domain "D")");
}

TEST(AState, IsReportedAndListedAsOnARealMac) {
    std::string lines;
    for (const CopyStateRow& row : copyStates) {
        EXPECT_EQ(&describe(row.state), &row);
        EXPECT_EQ(copyStateWithText(row.text), row.state);
        std::ostringstream line;
        line << row.text << ": " << row.condition << ' ' << row.reported << ' ' << row.isEnabled
             << row.isAwaitingUserApproval << row.isUninstalling << ' ' << row.enabledStar << row.activeStar << '\n';
        lines += line.str();
    }
    EXPECT_EQ(lines, "validating: preparing 0 000 00\n"
                     "staging: preparing 0 000 00\n"
                     "activated waiting for user: waiting 1 010 01\n"
                     "activated enabled: enabled 1 100 11\n"
                     "activated disabled: disabled 1 000 00\n"
                     "terminating for upgrade via delegate: uninstalling 1 001 11\n"
                     "terminating for uninstall: uninstalling 1 001 11\n"
                     "terminated waiting to uninstall on reboot: uninstalling 1 001 00\n");
}

TEST(AState, CanBeInstalledByEitherWordIfACopyCanStayInIt) {
    std::map<std::string_view, std::string_view> installable;
    for (const CopyStateRow& row : copyStates) {
        EXPECT_EQ(conditionFor(row.text), row.condition);
        EXPECT_EQ(conditionFor(row.condition), row.condition);
        EXPECT_EQ(installableState(row.text), row.canBeInstalled ? std::optional{row.state} : std::nullopt);
        if (const auto state = installableState(row.condition)) installable[row.condition] = describe(*state).text;
    }
    EXPECT_EQ(installable, (std::map<std::string_view, std::string_view>{
                               {"waiting", "activated waiting for user"},
                               {"enabled", "activated enabled"},
                               {"disabled", "activated disabled"},
                               {"uninstalling", "terminated waiting to uninstall on reboot"}}));
}

TEST(TheCategories, AreInTheAlphabeticalOrderOfTheirNames) {
    const auto named = [](const char* name) {
        return categoryNamed(std::string{"com.apple.system_extension."} + name);
    };
    EXPECT_EQ(named("cmio"), Category::camera);
    EXPECT_EQ(named("driver_extension"), Category::driver);
    EXPECT_EQ(named("endpoint_security"), Category::endpointSecurity);
    EXPECT_EQ(named("network_extension"), Category::network);
    EXPECT_EQ(named("unknown"), std::nullopt);
    for (std::size_t index = 1; index < categories.size(); ++index)
        EXPECT_LT(categories.at(index - 1).name, categories.at(index).name);
}

TEST(TheTables, AreInTheOrderOfTheirEnumerators) {
    for (const SwitchRow& row : switches) {
        EXPECT_EQ(&describe(row.which), &row);
        EXPECT_EQ(switchNamed(row.name), row.which);
    }
    for (const FaultRow& row : faultKinds) {
        EXPECT_EQ(nameOf(row.kind), row.name);
        EXPECT_EQ(faultKindNamed(row.name), row.kind);
    }
    EXPECT_EQ(switchNamed("nonsense"), std::nullopt);
    EXPECT_EQ(faultKindNamed("nonsense"), std::nullopt);
}

// Verbs --------------------------------------------------------------------------------------------------------------

std::vector<Word> wordsIn(const std::string& line) {
    std::istringstream stream{line};
    std::vector<Word> words;
    for (std::string word; stream >> word;)
        words.push_back({word});
    return words;
}

/// What is said to a line: the text, or a word for the refusal, or why it is not understood.
std::string said(SampleMac& mac, const Saying& saying) {
    try {
        const Outcome outcome = understood(saying)(mac.machine());
        mac.rest();
        const auto* const refusal = std::get_if<Refusal>(&outcome);
        return refusal ? "refused: " + refusal->message : std::get<std::string>(outcome);
    } catch (const NotUnderstood& problem) {
        return std::string{"not understood: "} + problem.what();
    }
}

std::string said(SampleMac& mac, const std::string& line) {
    return said(mac, {wordsIn(line), {}});
}

class AVerb : public testing::Test {
protected:
    std::string says(const std::string& line) { return said(mac, line); }
    const Settings& settings() { return mac.machine().state().settings; }
    /// The fault that such a line orders.
    Fault ordered(const std::string& words) {
        mac.machine().reset();
        EXPECT_EQ(says("fault next " + words), "");
        const auto& faults = mac.machine().state().faults;
        return faults.empty() ? Fault{} : faults.begin()->second;
    }

    SampleMac mac;
};

TEST_F(AVerb, OfASettingSetsOrPrintsIt) {
    EXPECT_EQ(says("developer"), "Developer mode is off\n");
    EXPECT_EQ(says("developer on"), "");
    EXPECT_EQ(says("developer"), "Developer mode is on\n");
    EXPECT_EQ(says("developer off"), "");
    EXPECT_EQ(settings(), Settings{});
    EXPECT_EQ(says("advance 90s"), "90.000 s\n");
    EXPECT_EQ(says("advance 250ms"), "90.250 s\n");
    EXPECT_EQ(says("clock"), "90.250 s\n");
    EXPECT_EQ(says("applications"), "/Applications\n");
    EXPECT_EQ(says("applications /b /a"), "");
    EXPECT_EQ(says("applications"), "/b\n/a\n");
    EXPECT_EQ(says("applications here"), "refused: \"here\" is not an absolute path");
}

TEST_F(AVerb, OfASwitchSetsOneOrPrintsOneOrAll) {
    EXPECT_EQ(says("switch denial silence"), "");
    EXPECT_EQ(says("switch denial"),
              "denial\tsilence\t(error | silence)\tan activation that the user denies: fails with "
              "11, or is never answered\n");
    EXPECT_EQ(says("switch denial --reset"), "");
    EXPECT_EQ(
        says("switch"),
        R"(authorization	asked	(asked | granted)	a removal: waits for an administrator, or is authorized at once
denial	error	(error | silence)	an activation that the user denies: fails with 11, or is never answered
driver	idle	(idle | in-use)	an enabled driver: stops at once, or runs until the restart
properties	empty	(empty | error)	the properties of an extension without a copy: an empty list, or error 4
refusal	13	(13 | 11)	the error of a removal that the administrator refuses
restart	clean	(clean | lingers)	a terminated copy: gone after the restart, or one of them survives it once
second	supersedes	(supersedes | fails)	a second request for an extension: ends the first with 12, or itself fails with 12
upgrade	approved	(approved | asked)	another version of an approved extension: needs no approval, or needs it again
)");
}

TEST_F(AVerb, OfASwitchResetsOneOrAll) {
    for (const char* const line : {"switch denial silence", "switch driver in-use", "switch upgrade asked"})
        EXPECT_EQ(says(line), "");
    EXPECT_EQ(says("switch denial --reset"), "");
    EXPECT_EQ(settings().switches.size(), 2U);
    EXPECT_EQ(says("switch --reset"), "");
    EXPECT_EQ(settings(), Settings{});
}

TEST_F(AVerb, OfASwitchPrintsOneOrAllAsJson) {
    EXPECT_EQ(says("switch refusal 11"), "");
    EXPECT_EQ(says("switch refusal --json"),
              "[\n{\"name\":\"refusal\",\"value\":\"11\",\"default\":\"13\",\"otherwise\":\"11\","
              "\"meaning\":\"the error of a removal that the administrator refuses\"}\n]\n");
    EXPECT_THAT(says("switch --json"), testing::MatchesRegex("\\[\n(\\{[^}]*\\},\n){7}\\{[^}]*\\}\n\\]\n"));
}

TEST_F(AVerb, OfAFaultListsAndClearsThem) {
    EXPECT_EQ(says("fault list"), "No faults\n");
    const Saying quoted{{{"fault"}, {"next"}, {"any"}, {"-4"}, {"a \"b\"\nc"}, {"--domain"}, {"D"}}, {}};
    EXPECT_EQ(said(mac, quoted), "");
    for (const char* const order : {"activate 8", "deactivate after 90s", "properties silent"})
        EXPECT_EQ(says(std::string{"fault next "} + order), "");
    EXPECT_EQ(says("fault list"), "next any -4 \"a \\\"b\\\" c\" --domain \"D\"\n"
                                  "next activate 8\n"
                                  "next deactivate after 90.000s\n"
                                  "next properties silent\n");
    EXPECT_EQ(says("fault clear"), "");
    EXPECT_EQ(says("fault list"), "No faults\n");
}

TEST_F(AVerb, OfAProfileInstallsPrintsOrRemovesIt) {
    Profile profile;
    profile.source = std::string{"one\0two", 7};
    profile.allowsUserOverrides = false;
    mac.disk().bring(profile);
    EXPECT_EQ(says("profile"), "No profile\n");
    EXPECT_EQ(said(mac, {wordsIn("profile a.plist"), profile.source}), "");
    EXPECT_EQ(settings().profile, profile);
    EXPECT_EQ(says("profile"), profile.source);
    EXPECT_EQ(said(mac, {wordsIn("profile a.plist"), "other"}), "refused: the profile is malformed");
    EXPECT_EQ(said(mac, {wordsIn("profile a.plist"), ""}), "refused: the profile is empty");
    EXPECT_EQ(says("profile"), profile.source);
    EXPECT_EQ(says("profile --remove"), "");
    EXPECT_EQ(settings(), Settings{});
}

TEST_F(AVerb, ThatResetsAllKeepsOnlyTheApplicationsFolders) {
    mac.install("1", "enabled");
    for (const char* const line : {"developer on", "switch denial silence", "advance 90s", "applications /a"})
        says(line);
    Profile profile;
    profile.source = "one";
    mac.disk().bring(profile);
    EXPECT_EQ(said(mac, {wordsIn("profile a.plist"), "one"}), "");
    EXPECT_EQ(says("reset --all"), "");
    State box;
    box.settings.applicationsFolders = {"/a"};
    box.lastNumber = mac.machine().state().lastNumber;
    EXPECT_EQ(mac.machine().state(), box);
}

TEST_F(AVerb, OfAFaultOrdersIt) {
    const std::string domain{extensionErrorDomain};
    const auto fault = [](Fault::Kind kind, std::optional<RequestKind> request) { return Fault{kind, request, {}, 0}; };
    EXPECT_EQ(ordered("any silent"), fault(Fault::Kind::silent, {}));
    EXPECT_EQ(ordered("activate hollow"), fault(Fault::Kind::hollow, RequestKind::activation));
    EXPECT_EQ(ordered("activate noprompt"), fault(Fault::Kind::noprompt, RequestKind::activation));
    EXPECT_EQ(ordered("properties crash"), fault(Fault::Kind::crash, RequestKind::properties));
    EXPECT_EQ(ordered("deactivate after 90s"), (Fault{Fault::Kind::delay, RequestKind::deactivation, {}, 90'000}));
    EXPECT_EQ(ordered("any 8"), (Fault{Fault::Kind::error, {}, {domain, 8, ""}, 0}));
    EXPECT_EQ(ordered("any 99"), (Fault{Fault::Kind::error, {}, {domain, 99, ""}, 0}));
    EXPECT_EQ(ordered("any 9223372036854775807").failure.code, std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(ordered("any 8 broken"), (Fault{Fault::Kind::error, {}, {domain, 8, "broken"}, 0}));
    EXPECT_EQ(ordered("any -4 text --domain D"), (Fault{Fault::Kind::error, {}, {"D", -4, "text"}, 0}));
    EXPECT_EQ(ordered("any --domain=D 1"), (Fault{Fault::Kind::error, {}, {"D", 1, ""}, 0}));
}

TEST_F(AVerb, NamesAFileOrFoldersIfItHasSuchAnArgument) {
    using Names = Verb::Names;
    EXPECT_TRUE(names(wordsIn("profile a.plist"), Names::file));
    EXPECT_FALSE(names(wordsIn("profile"), Names::file));
    EXPECT_FALSE(names(wordsIn("profile --remove"), Names::file));
    EXPECT_TRUE(names(wordsIn("applications a b"), Names::folders));
    EXPECT_FALSE(names(wordsIn("allow a"), Names::folders));
}

TEST_F(AVerb, TreatsAQuotedOptionAsText) {
    mac.machine().reset();
    const Saying saying{{{"fault"}, {"next"}, {"any"}, {"8"}, {"--domain", true}}, {}};
    EXPECT_EQ(said(mac, saying), "");
    EXPECT_EQ(mac.machine().state().faults.begin()->second.failure.description, "--domain");
}

/// A line that makes no sense, and the complaint about it; with "..." at the end, how that begins.
struct Misuse {
    const char* line;
    const char* complaint;
};

const Misuse misuses[]{
    {"", "unknown verb \"\"; \"sysextctl --help\" lists the verbs"},
    {"alow x", "unknown verb \"alow\"; \"sysextctl --help\" lists the verbs"},
    {"allow", "missing argument; usage: sysextctl allow ID; see \"sysextctl allow --help\""},
    {"allow x y", "unexpected \"y\"; usage: sysextctl allow ID; see \"sysextctl allow --help\""},
    {"restart now", "unexpected \"now\"; usage: sysextctl restart; see \"sysextctl restart --help\""},
    {"install x 2.0", "missing argument..."},
    {"install x 2.0 2004 absent",
     "unknown state \"absent\"; use one of: waiting, enabled, disabled, uninstalling, activated waiting "
     "for user, activated enabled, activated disabled, terminated waiting to uninstall on reboot"},
    {"install x 2.0 2004 --quick", "unexpected option \"--quick\"; usage: ..."},
    {"uninstall x", "missing argument..."},
    {"restart --quick", "unexpected option \"--quick\"; usage: ..."},
    {"reset --quick", "unexpected option \"--quick\"; usage: ..."},
    {"developer on --quick", "unexpected option \"--quick\"; usage: ..."},
    {"developer maybe", "unknown mode \"maybe\"; use one of: on, off"},
    {"profile --remove x", "unexpected \"x\"; usage: sysextctl profile..."},
    {"profile --remove --remove", "unexpected option \"--remove\"; usage: ..."},
    {"advance soon", "\"soon\" is not a time; examples: 90s, 5m, 250ms"},
    {"advance", "missing argument..."},
    {"switch denail loud", "unknown switch \"denail\"; use one of: authorization, denial, driver, properties, refusal, "
                           "restart, second, upgrade"},
    {"switch denail", "unknown switch \"denail\"; use one of: ..."},
    {"switch denial loud", "unknown value of denial \"loud\"; use one of: error, silence"},
    {"switch denial silence now", "unexpected \"now\"; usage: sysextctl switch..."},
    {"fault activate silent x", "expected \"next\", not \"activate\"; usage: ..."},
    {"fault next any", "missing argument; usage: ..."},
    {"fault next any silent x", "unexpected \"x\"; usage: ..."},
    {"fault next any after", "missing argument; usage: ..."},
    {"fault next any silent --domain D", "unexpected option \"--domain\"; usage: ..."},
    {"fault next any 8 text more", "unexpected \"more\"; usage: ..."},
    {"fault next any 0",
     "\"0\" is not an error code; use 1 to 9223372036854775807, or in another domain a negative number"},
    {"fault next any 0 --domain D", "\"0\" is not an error code..."},
    {"fault next any -4", "\"-4\" is not an error code..."},
    {"fault next any 9223372036854775808", "\"9223372036854775808\" is not an error code..."},
    {"fault list any", "unexpected \"any\"; usage: ..."},
    {"fault list --quick", "unexpected option \"--quick\"; usage: ..."},
    {"fault clear any", "unexpected \"any\"; usage: ..."},
    {"switch denial silence --reset", "unexpected \"silence\"; usage: ..."},
    {"switch denial silence --json", "unexpected \"silence\"; usage: ..."},
    {"switch --reset --json", "unexpected option \"--json\"; usage: ..."},
    {"clock 5", "unexpected \"5\"; usage: ..."},
    {"fault next any 8 --domain", "missing domain; usage: ..."},
    {"fault next query silent", "unknown kind of request \"query\"; use one of: activate, deactivate, properties, any"},
    {"fault next any 8x", "unknown fault \"8x\"; use one of: an error code, after, silent, hollow, noprompt, crash"},
    {"fault next any after soon", "\"soon\" is not a time; examples: 90s, 5m, 250ms"},
    {"fault next properties hollow",
     "unknown kind of hollow request \"properties\"; use one of: activate, deactivate, any"},
    {"fault next deactivate noprompt", "unknown kind of noprompt request \"deactivate\"; use one of: activate, any"},
};

TEST_F(AVerb, NeedsAnArgumentIfTheFirstInItsUsageIsNotInBrackets) {
    for (const Verb& verb : verbs()) {
        const bool isComplete = verb.usage.empty() || verb.usage.front() == '[';
        EXPECT_EQ(isComplete, says(std::string{verb.word}).find("missing argument") == std::string::npos) << verb.word;
    }
}

TEST_F(AVerb, ThatIsWrongIsRejectedWithAReason) {
    for (const Misuse& misuse : misuses) {
        std::string expected = "not understood: " + std::string{misuse.complaint};
        std::string complaint = says(misuse.line);
        const bool isBeginning = expected.substr(expected.size() - 3) == "...";
        if (isBeginning) expected.resize(expected.size() - 3);
        if (isBeginning) complaint.resize(std::min(complaint.size(), expected.size()));
        EXPECT_EQ(complaint, expected) << misuse.line;
    }
    EXPECT_THAT(said(mac, {{{"applications"}, {""}}, {}}),
                testing::StartsWith("not understood: \"\" is not a folder; "));
    EXPECT_EQ(mac.machine().state(), State{});
}

} // namespace
} // namespace simulator
