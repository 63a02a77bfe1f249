// The words among which one has to choose: the help names those that are understood, and no others.

#include "simulator/core/Fault.h"
#include "simulator/scenario/Scenario.h"
#include "simulator/scenario/ScenarioError.h"
#include "simulator/sysextctl/CommandFailure.h"
#include "simulator/sysextctl/CommandLine.h"
#include "simulator/sysextctl/Help.h"

#include <QRegularExpression>

#include <set>

namespace simulator::ctl {

namespace {

using WordSet = std::set<std::string>;

WordSet wordsIn(const QString& text, const QString& separator) {
    WordSet words;
    for (const auto& word : text.split(QRegularExpression{separator}))
        words.insert(word.toStdString());
    return words;
}

/// The list in "STATE is absent, enabled (the default) or waiting."
WordSet wordsFor(const QString& placeholder, const QString& verb) {
    const auto sentence = QRegularExpression{"\\b" + placeholder + " is ([^.;]*)[.;]"}.match(
        help(verb).remove(QRegularExpression{"\\([^)]*\\)"}).simplified());
    EXPECT_TRUE(sentence.hasMatch()) << placeholder.toStdString();
    return wordsIn(sentence.captured(1).simplified().replace(" ,", ","), ", | or ");
}

QString complaintOfAScenario(const QString& line) {
    try {
        scenario::readScenario(line.toStdString(), "a.scenario", ".");
    } catch (const scenario::ScenarioError& error) {
        return error.what();
    }
    return {};
}

QString complaintOfTheCommandLine(const QString& line) {
    try {
        readCommandLine(line.split(u' '));
    } catch (const CommandFailure& failure) {
        return failure.what();
    }
    return {};
}

/// The words that a complaint about another one lists.
WordSet knownIn(const QString& complaint) {
    const auto list = QRegularExpression{"; there is ([^;]*)"}.match(complaint);
    EXPECT_TRUE(list.hasMatch()) << complaint.toStdString();
    return wordsIn(list.captured(1), ", ");
}

using Complaint = QString (*)(const QString& line);

/// Takes a line with "?" where the word stands.
void expectToUnderstand(const WordSet& words, const QString& line, Complaint complaintAbout) {
    EXPECT_EQ(words, knownIn(complaintAbout(QString{line}.replace('?', "nonsense")))) << line.toStdString();
    for (const auto& word : words) {
        const auto complaint = complaintAbout(QString{line}.replace('?', QString::fromStdString(word)));
        EXPECT_TRUE(complaint.isEmpty()) << complaint.toStdString();
    }
}

/// A choice in a line of a scenario, as its grammar writes it, and such a line.
struct Choice {
    const char* words;
    const char* line;
};

constexpr std::array choices{
    Choice{"replace|cancel|later", "activate com.x answering ?"},
    Choice{"replace|cancel", "answer com.x ?"},
    Choice{"enabled|waiting|disabled|uninstalling", "install com.x 1.0 100 ?"},
    Choice{"enabled|waiting|disabled|uninstalling", "expect found 1.0/100 ?"},
    Choice{"on|off", "developer ?"},
    Choice{"0|1", "expect finished ?"},
    Choice{"replacement|user|authorization|delayed|silent", "expect request com.x ?"},
};

bool isTime(const QString& word) {
    return complaintOfAScenario("advance " + word).isEmpty();
}

} // namespace

TEST(TheHelpOfPlay, NamesTheWordsOfEachPlaceholder) {
    const auto expectWords = [](const QString& placeholder, const QString& line) {
        expectToUnderstand(wordsFor(placeholder, "play"), line, complaintOfAScenario);
    };
    expectWords("LACK", "carry com.x.systemextension 1.0/100 without ?");
    expectWords("CATEGORY", "carry com.x.systemextension 1.0/100 category ?");
    expectWords("KIND", "fault next ? silent");
    expectWords("STATE", "expect copy com.x 1.0/100 ?");
}

TEST(TheHelpOfPlay, NamesTheWordsOfEachChoice) {
    for (const Choice& choice : choices)
        expectToUnderstand(wordsIn(choice.words, "\\|"), choice.line, complaintOfAScenario);
}

TEST(TheHelpOfPlay, HasNoChoiceBesides) {
    WordSet known;
    for (const Choice& choice : choices)
        known.insert(choice.words);
    WordSet found;
    auto groups = QRegularExpression{"\\w+(\\|\\w+)+"}.globalMatch(QString::fromStdString(scenario::grammar()));
    while (groups.hasNext())
        found.insert(groups.next().captured().toStdString());
    EXPECT_EQ(known, found);
}

TEST(TheHelpOfPlay, NamesEachFaultAndNoOther) {
    const auto usage = QRegularExpression{"^fault next KIND (.*)$", QRegularExpression::MultilineOption}.match(
        QString::fromStdString(scenario::grammar()));
    WordSet expected{"CODE [TEXT] [--domain D]", "after TIME"};
    for (const FaultRow& row : faultKinds) {
        const auto isWritten = row.kind == Fault::Kind::error || row.kind == Fault::Kind::delay;
        if (!isWritten) expected.insert(std::string{row.name});
    }
    EXPECT_EQ(expected, wordsIn(usage.captured(1), " \\| "));
    for (const QString fault :
         {"8", "8 text", "8 text --domain D", "after 90s", "silent", "hollow", "noprompt", "crash"})
        EXPECT_EQ(complaintOfAScenario("fault next any " + fault), QString{}) << fault.toStdString();
}

TEST(TheHelpOfPlay, NamesEachUnitOfATimeAndNoOther) {
    const auto units = QRegularExpression{"TIME is a number with ([^;]*);"}.match(help("play").simplified());
    WordSet accepted;
    for (char first = 'a'; first <= 'z'; ++first) {
        for (const char second : std::string{"\0abcdefghijklmnopqrstuvwxyz", 27}) {
            const auto unit = second == '\0' ? QString{QChar{first}} : QString{QChar{first}} + QChar{second};
            if (isTime("5" + unit)) accepted.insert(unit.toStdString());
        }
    }
    EXPECT_EQ(accepted, wordsIn(units.captured(1), ", | or "));
    EXPECT_TRUE(isTime("5"));
}

TEST(TheHelpOfAVerb, NamesTheWordsOfEachPlaceholder) {
    expectToUnderstand(wordsFor("STATE", "install"), "install com.x 1.0 100 ?", complaintOfTheCommandLine);
    expectToUnderstand(wordsFor("STATE", "wait"), "wait com.x ?", complaintOfTheCommandLine);
    expectToUnderstand(wordsFor("KIND", "fault"), "fault next ? silent", complaintOfTheCommandLine);
    expectToUnderstand({"on", "off"}, "developer ?", complaintOfTheCommandLine);
}

} // namespace simulator::ctl
