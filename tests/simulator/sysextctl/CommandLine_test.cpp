// What is typed and printed, without a bus.

#include "simulator/core/State.h"
#include "simulator/core/Verbs.h"
#include "simulator/player/Scenario.h"
#include "simulator/sysextctl/Commands.h"
#include "simulator/sysextctl/Output.h"
#include "tests/simulator/support/ScriptedControl.h"
#include "tests/support/QtTesting.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace simulator::ctl {

using tests::copyIn;

namespace {

constexpr auto camera = "com.kelvra.ip-camera.cmio";
constexpr auto network = "com.kelvra.driverkit.usb-to-poe";

// What is not understood ---------------------------------------------------------------------------------------------

/// The one line about words that are not understood; empty if they are.
std::string complaintAbout(const WordList& words) {
    try {
        readCommandLine(words);
    } catch (const CommandFailure& failure) {
        EXPECT_EQ(failure.code(), exitCode::notUnderstood);
        return failure.what();
    }
    return {};
}

std::string complaintAbout(const QString& line) {
    WordList words;
    for (const QString& word : QProcess::splitCommand(line))
        words.push_back(word.toStdString());
    return complaintAbout(words);
}

struct Misuse {
    const char* line;
    const char* complaint;
};

const Misuse misuses[]{
    {"", "missing verb; \"sysextctl --help\" lists the verbs"},
    {"frobnicate", "unknown verb \"frobnicate\"; \"sysextctl --help\" lists the verbs"},
    {"help frobnicate", "unknown verb \"frobnicate\"; \"sysextctl --help\" lists the verbs"},
    {"list dext",
     "unknown category \"dext\"; use one of: cmio, driver_extension, endpoint_security, network_extension"},
    {"list --xml",
     "unexpected option \"--xml\"; usage: sysextctl list [CATEGORY] [--json]; see \"sysextctl list --help\""},
    {"list cmio cmio", "unexpected \"cmio\"; usage: sysextctl list [CATEGORY] [--json]; see \"sysextctl list --help\""},
    {"requests x", "unexpected \"x\"; usage: sysextctl requests [--json]; see \"sysextctl requests --help\""},
    {"watch x", "unexpected \"x\"; usage: sysextctl watch [--json]; see \"sysextctl watch --help\""},
    {"wait x", "missing argument; usage: sysextctl wait ID STATE [--timeout TIME]; see \"sysextctl wait --help\""},
    {"wait x absent --timeout",
     "missing time; usage: sysextctl wait ID STATE [--timeout TIME]; see \"sysextctl wait --help\""},
    {"wait x ready",
     "unknown state \"ready\"; use one of: absent, preparing, waiting, enabled, disabled, uninstalling, validating, "
     "staging, activated waiting for user, activated enabled, activated disabled, terminating for upgrade via "
     "delegate, terminating for uninstall, terminated waiting to uninstall on reboot"},
    {"wait x absent --timeout -1", "\"-1\" is not a time; examples: 90s, 5m, 250ms"},
    {"play --tap", "missing argument; usage: sysextctl play FILE... [--bus] [--verbose] [--tap] [--timeout TIME] [-- "
                   "COMMAND]; see \"sysextctl play --help\""},
    {"play a -- true", "a command names the program in an application, such as Meter.app/Contents/MacOS/meter"},
    {"allow", "missing argument; usage: sysextctl allow ID; see \"sysextctl allow --help\""},
};

TEST(TheCommandLine, SaysWhatItDoesNotUnderstand) {
    for (const Misuse& misuse : misuses)
        EXPECT_EQ(complaintAbout(QString{misuse.line}), misuse.complaint) << misuse.line;
}

TEST(TheCommandLine, UnderstandsOptionsWhereverTheyStand) {
    for (const auto* const line :
         {"list --json cmio", "list com.apple.system_extension.cmio --json", "requests --json",
          "wait x enabled --timeout 5", "wait --timeout 0.25 x enabled", "wait x enabled --timeout=2m",
          "play --bus a.scenario", "fault next any --help", "fault -h", "help wait", "help", "-h"})
        EXPECT_EQ(complaintAbout(QString{line}), "") << line;
}

TEST(TheCommandLine, AnswersInOneLineWhateverWasTyped) {
    EXPECT_EQ(complaintAbout(WordList{"frob\nnicate\u2028\t"}),
              "unknown verb \"frob nicate  \"; \"sysextctl --help\" lists the verbs");
}

// The lists ----------------------------------------------------------------------------------------------------------

TEST(TheList, HasAHeadForEachCategoryAndALineForEachCopy) {
    EXPECT_EQ(asText(QList<CopyEntry>{}), "0 extension(s)\n");
    EXPECT_EQ(asText({copyIn("enabled"), copyIn("uninstalling", camera, "2.0", "2004"), copyIn("waiting", network)}),
              "3 extension(s)\n"
              "--- com.apple.system_extension.cmio\n"
              "enabled\tactive\tteamID\tbundleID (version)\tname\t[state]\n"
              "*\t*\tKELVRA0001\tcom.kelvra.ip-camera.cmio (2.1/2105)\tCamera\t[activated enabled]\n"
              "\t\tKELVRA0001\tcom.kelvra.ip-camera.cmio (2.0/2004)\tCamera\t"
              "[terminated waiting to uninstall on reboot]\n"
              "--- com.apple.system_extension.driver_extension\n"
              "enabled\tactive\tteamID\tbundleID (version)\tname\t[state]\n"
              "\t*\tKELVRA0001\tcom.kelvra.driverkit.usb-to-poe (2.1/2105)\tNetwork\t[activated waiting for user]\n");
}

TEST(TheList, KeepsItsColumnsWhateverANameHolds) {
    auto copy = copyIn("enabled");
    copy.name = "Two\tcolumns\nand lines %1 %2";
    EXPECT_EQ(asText({copy}).split(u'\n').at(3), "*\t*\tKELVRA0001\tcom.kelvra.ip-camera.cmio (2.1/2105)\t"
                                                 "Two columns and lines %1 %2\t[activated enabled]");
}

TEST(TheCategories, AreNamedInFullOrByTheirLastPart) {
    EXPECT_EQ(categoryNamed("endpoint_security"), "com.apple.system_extension.endpoint_security");
    EXPECT_EQ(categoryNamed("com.apple.system_extension.cmio"), "com.apple.system_extension.cmio");
    EXPECT_EQ(categoryNamed("camera"), "");
}

RequestEntry request() {
    return {3,      ":1.7", "token", "/Applications/Driver Manager.app", "activation", "com.kelvra.ip-camera.cmio",
            "user", 90'250};
}

TEST(TheRequests, AreShownInColumnsSeparatedByTabs) {
    EXPECT_EQ(asText(QList<RequestEntry>{}), "0 request(s)\n");
    EXPECT_EQ(asText({request()}),
              "1 request(s)\n"
              "number\tkind\tbundleID\tsince (s)\tapplication\t[stage]\n"
              "3\tactivation\tcom.kelvra.ip-camera.cmio\t90.250\t/Applications/Driver Manager.app\t[user]\n");
}

/// The first of the objects in a JSON list, as one line with its keys in their order.
QString firstIn(const QString& json) {
    const auto object = QJsonDocument::fromJson(json.toUtf8()).array().at(0).toObject();
    return QJsonDocument{object}.toJson(QJsonDocument::Compact);
}

TEST(TheJsonLists, HaveOneObjectALineWithEveryColumn) {
    auto copy = copyIn("enabled");
    copy.name = "A \"quoted\" name";
    copy.number = 7;
    copy.application = "/Applications/Driver Manager.app";
    const QString copies = asJson({copy, copyIn("disabled", network)});
    EXPECT_EQ(copies.count(u'\n'), 4);
    EXPECT_EQ(firstIn(copies), R"({"active":true,"application":"/Applications/Driver Manager.app",)"
                               R"("category":"com.apple.system_extension.cmio","condition":"enabled","enabled":true,)"
                               R"("identifier":"com.kelvra.ip-camera.cmio","name":"A \"quoted\" name","number":7,)"
                               R"("shortVersion":"2.1","state":"activated enabled","team":"KELVRA0001",)"
                               R"("version":"2105"})");
    EXPECT_EQ(firstIn(asJson({request()})),
              R"({"application":"/Applications/Driver Manager.app","client":":1.7",)"
              R"("identifier":"com.kelvra.ip-camera.cmio","kind":"activation","number":3,"since":90250,)"
              R"("sinceMilliseconds":90250,)"
              R"("stage":"user","token":"token"})");
    EXPECT_EQ(asJson(QList<CopyEntry>{}), "[]\n");
    EXPECT_EQ(asJson(QList<RequestEntry>{}), "[]\n");
}

TEST(AState, IsReachedIfAnyCopyIsInItByEitherWordOrNoneIsThere) {
    const QList<CopyEntry> copies{copyIn("enabled", camera, "2.0", "2004"), copyIn("waiting")};
    EXPECT_TRUE(isIn(copies, camera, "enabled"));
    EXPECT_TRUE(isIn(copies, camera, "waiting"));
    EXPECT_TRUE(isIn(copies, camera, "activated waiting for user"));
    EXPECT_FALSE(isIn(copies, camera, "activated disabled"));
    EXPECT_FALSE(isIn(copies, camera, "disabled"));
    EXPECT_FALSE(isIn(copies, network, "enabled"));
    EXPECT_TRUE(isIn(copies, network, "absent"));
    EXPECT_FALSE(isIn({copyIn("uninstalling")}, camera, "absent"));
    EXPECT_FALSE(isIn({copyIn("preparing")}, camera, "absent"));
}

// The help -----------------------------------------------------------------------------------------------------------

QString helpOf(const std::string& word) {
    return QString::fromStdString(help(commandNamed(word)));
}

TEST(TheHelp, SaysOfEachVerbMoreThanItsSummaryWhichCanBeReadAlone) {
    const QRegularExpression reference{"^\\w+ it\\b"};
    for (const Command& command : commands()) {
        EXPECT_GT(command.details.size(), command.summary.size()) << command.word;
        EXPECT_EQ(command.details.back(), '\n') << command.word;
        EXPECT_FALSE(reference.match(QString::fromStdString(std::string{command.summary})).hasMatch()) << command.word;
    }
}

TEST(TheHelp, FitsAScreenOf120Columns) {
    auto texts = QString::fromStdString(help());
    for (const Command& command : commands())
        texts += helpOf(std::string{command.word});
    for (const auto& line : texts.split(u'\n'))
        EXPECT_LE(line.size(), 120) << line.toStdString();
}

TEST(TheHelp, OfAVerbSaysHowItIsCalledAndWhatItMeans) {
    EXPECT_EQ(helpOf("install"), "usage: sysextctl install ID SHORT BUILD [STATE]\n"
                                 "\n"
                                 "Installs a copy without a request.\n"
                                 "SHORT and BUILD are the two parts of the version. An enabled or disabled copy is "
                                 "also approved. STATE is one of\nthese, in either wording, and enabled if left out:\n"
                                 "  waiting        activated waiting for user\n"
                                 "  enabled        activated enabled\n"
                                 "  disabled       activated disabled\n"
                                 "  uninstalling   terminated waiting to uninstall on reboot\n"
                                 "Example: sysextctl install com.kelvra.ip-camera.cmio 2.0 2004 \"activated waiting "
                                 "for user\"\n");
}

TEST(TheHelp, NamesEachKeyOfTheJson) {
    const auto expectKeys = [](const QString& json, const std::string& word) {
        const QString text = helpOf(word).section("\n\n", 1).simplified();
        for (const auto& key : QJsonDocument::fromJson(json.toUtf8()).array().at(0).toObject().keys())
            EXPECT_TRUE(QRegularExpression{"--json.*\\b" + key + "\\b"}.match(text).hasMatch()) << key.toStdString();
    };
    expectKeys(asJson({CopyEntry{}}), "list");
    expectKeys(asJson({RequestEntry{}}), "requests");
    expectKeys("[" + asJson(EventEntry{}) + "]", "watch");
}

using WordSet = std::set<std::string>;

/// The first words of the lines that are set in, which are the names of what the help of a verb tabulates.
WordSet namesIn(const std::string& word) {
    WordSet names;
    for (const auto& line : helpOf(word).split(u'\n'))
        if (line.startsWith("  ")) names.insert(line.simplified().section(u' ', 0, 0).toStdString());
    return names;
}

TEST(TheHelp, NamesEachStageInWhichARequestIsListed) {
    WordSet stages;
    for (auto stage = Stage::delayed; stage != Stage::ended; stage = static_cast<Stage>(static_cast<int>(stage) + 1))
        stages.insert(std::string{nameOf(stage)});
    EXPECT_EQ(namesIn("requests"), stages);
}

TEST(TheHelp, NamesEachSwitchWithItsValues) {
    WordSet names;
    for (const auto& row : switches) {
        names.insert(std::string{row.name});
        const auto values = std::string{row.byDefault} + " | " + std::string{row.otherwise};
        EXPECT_TRUE(helpOf("switch").contains(QString::fromStdString(values))) << values;
    }
    EXPECT_EQ(namesIn("switch"), names);
}

WordSet wordsIn(const QString& text, const QString& separator) {
    WordSet words;
    for (const auto& word : text.split(QRegularExpression{separator}))
        words.insert(word.toStdString());
    return words;
}

/// The list in "STATE is absent, enabled (the default) or waiting."
WordSet wordsFor(const QString& placeholder, const std::string& verb) {
    const auto text = helpOf(verb).remove(QRegularExpression{"\\([^)]*\\)"}).simplified();
    const auto sentence =
        QRegularExpression{"\\b" + placeholder + "(?: that is expected)? is ([^.;]*)[.;]"}.match(text);
    EXPECT_TRUE(sentence.hasMatch()) << placeholder.toStdString();
    return wordsIn(sentence.captured(1).simplified().replace(" ,", ","), ", or |, | or ");
}

/// The states that the help of a verb tabulates, in both wordings.
WordSet statesIn(const std::string& verb) {
    WordSet states;
    for (const auto& line : helpOf(verb).split(u'\n')) {
        if (!line.startsWith("  ")) continue;
        states.insert(line.simplified().section(u' ', 0, 0).toStdString());
        states.insert(line.simplified().section(u' ', 1).toStdString());
    }
    return states;
}

std::string complaintOfAScenario(const QString& line) {
    try {
        player::readScenario(line.toStdString(), "a.scenario", ".");
    } catch (const player::ScenarioError& error) {
        return error.what();
    }
    return {};
}

/// Of a line with "?" where a word stands: the words that a complaint about another one lists, and that are understood.
template <typename Complain>
WordSet understoodIn(const QString& line, Complain complaintOf) {
    const auto complaint = QString::fromStdString(complaintOf(QString{line}.replace('?', "nonsense")));
    const auto list = QRegularExpression{"; use one of: ([^;]*)"}.match(complaint);
    EXPECT_TRUE(list.hasMatch()) << complaint.toStdString();
    const WordSet words = wordsIn(list.captured(1), ", ");
    for (const auto& word : words)
        EXPECT_EQ(complaintOf(QString{line}.replace('?', QString::fromStdString(word))), "");
    return words;
}

TEST(TheHelp, NamesTheWordsThatAreUnderstoodAndNoOthers) {
    const auto typed = [](const QString& line) { return complaintAbout(line); };
    EXPECT_EQ(statesIn("install"), understoodIn("install com.x 1.0 100 \"?\"", typed));
    WordSet states = statesIn("wait");
    EXPECT_TRUE(states.insert("absent").second);
    EXPECT_EQ(states, understoodIn("wait com.x \"?\"", typed));
    EXPECT_EQ(wordsFor("KIND", "fault"), understoodIn("fault next ? silent", typed));
    EXPECT_EQ(wordsFor("LACK", "play"),
              understoodIn("carry com.x.systemextension 1/1 without ?", complaintOfAScenario));
    EXPECT_EQ(wordsFor("CATEGORY", "play"),
              understoodIn("carry com.x.systemextension 1/1 category ?", complaintOfAScenario));
    states.erase("absent");
    EXPECT_EQ(states, understoodIn("expect copy com.x 1/1 ?", complaintOfAScenario));
    EXPECT_EQ(understoodIn("install com.x 1.0 100 ?", complaintOfAScenario), statesIn("install"));
}

/// A choice in a line of a scenario, as its grammar writes it, and such a line.
struct Choice {
    const char* words;
    const char* line;
};

const Choice choices[]{
    {"replace|cancel|later", "activate com.x answering ?"},
    {"replace|cancel", "answer com.x ?"},
    {"on|off", "developer ?"},
    {"0|1", "expect finished ?"},
    {"replacement|user|authorization|delayed|silent", "expect request com.x ?"},
};

TEST(TheHelp, NamesTheWordsOfEachChoiceInALineOfAScenario) {
    WordSet known;
    for (const Choice& choice : choices) {
        EXPECT_EQ(wordsIn(choice.words, "\\|"), understoodIn(choice.line, complaintOfAScenario)) << choice.line;
        known.insert(choice.words);
    }
    WordSet found;
    auto groups = QRegularExpression{"\\w+(\\|\\w+)+"}.globalMatch(QString::fromStdString(player::grammar()));
    while (groups.hasNext())
        found.insert(groups.next().captured().toStdString());
    EXPECT_EQ(found, known);
}

TEST(TheHelp, NamesEachFaultThatALineOfAScenarioMayOrder) {
    const QRegularExpression line{"^fault clear \\| next KIND (.*)$", QRegularExpression::MultilineOption};
    const auto usage = line.match(QString::fromStdString(player::grammar()));
    EXPECT_EQ(wordsIn(usage.captured(1), " \\| "),
              (WordSet{"CODE [TEXT] [--domain D]", "after TIME", "silent", "hollow", "noprompt", "crash"}));
    for (const QString fault :
         {"8", "8 text", "8 text --domain D", "after 90s", "silent", "hollow", "noprompt", "crash"})
        EXPECT_EQ(complaintOfAScenario("fault next any " + fault), "");
}

TEST(TheHelp, NamesEachUnitOfATimeAndNoOther) {
    const auto units = QRegularExpression{"TIME is a number with ([^;]*);"}.match(helpOf("play").simplified());
    WordSet accepted;
    for (char first = 'a'; first <= 'z'; ++first) {
        for (const char second : std::string{"\0abcdefghijklmnopqrstuvwxyz", 27}) {
            std::string unit{first};
            if (second != '\0') unit += second;
            if (complaintAbout(WordList{"advance", "5" + unit}).empty()) accepted.insert(unit);
        }
    }
    EXPECT_EQ(accepted, wordsIn(units.captured(1), ", | or "));
}

} // namespace

} // namespace simulator::ctl
