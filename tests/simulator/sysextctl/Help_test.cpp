#include "simulator/core/Request.h"
#include "simulator/core/Switch.h"
#include "simulator/sysextctl/CopyList.h"
#include "simulator/sysextctl/Help.h"
#include "simulator/sysextctl/RequestList.h"
#include "simulator/sysextctl/Verbs.h"
#include "tests/simulator/support/Printing.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <set>

namespace simulator::ctl {

namespace {

/// The first words of the lines that are set in, which are the names of what the help of a verb tabulates.
std::set<std::string> namesIn(const QString& verb) {
    std::set<std::string> names;
    for (const auto& line : verbNamed(verb)->details.split(u'\n')) {
        if (line.startsWith("  ")) names.insert(line.simplified().section(u' ', 0, 0).toStdString());
    }
    return names;
}

} // namespace

TEST(TheHelp, SaysMoreOfEachVerbThanItsSummary) {
    for (const auto& verb : verbs()) {
        EXPECT_GT(verb.details.size(), verb.summary.size()) << verb.name.toStdString();
        EXPECT_TRUE(verb.details.endsWith(u'\n')) << verb.name.toStdString();
    }
}

TEST(TheHelp, HasASummaryOfEachVerbThatCanBeReadAlone) {
    const QRegularExpression reference{"^\\w+ it\\b"};
    for (const auto& verb : verbs())
        EXPECT_FALSE(reference.match(verb.summary).hasMatch()) << verb.name.toStdString();
}

TEST(TheHelpOfRequests, NamesEachStageInWhichOneIsListed) {
    std::set<std::string> stages;
    for (auto stage = Stage::delayed; stage != Stage::ended; stage = static_cast<Stage>(static_cast<int>(stage) + 1))
        stages.insert(std::string{nameOf(stage)});
    EXPECT_EQ(stages, namesIn("requests"));
}

TEST(TheHelp, NamesEachKeyOfTheJson) {
    const auto expectKeys = [](const QString& json, const QString& verb) {
        const auto keys = QJsonDocument::fromJson(json.toUtf8()).array().at(0).toObject().keys();
        EXPECT_FALSE(keys.isEmpty());
        for (const auto& key : keys) {
            const QRegularExpression word{"--json.*\\b" + key + "\\b"};
            EXPECT_TRUE(word.match(help(verb).section("\n\n", 1).simplified()).hasMatch()) << key.toStdString();
        }
    };
    expectKeys(copiesAsJson({CopyEntry{}}), "list");
    expectKeys(requestsAsJson({RequestEntry{}}), "requests");
}

TEST(TheHelpOfSwitch, NamesEachSwitchWithItsValues) {
    std::set<std::string> names;
    for (const auto& row : switches) {
        names.insert(std::string{row.name});
        const auto values = std::string{row.byDefault} + " | " + std::string{row.otherwise};
        EXPECT_TRUE(verbNamed("switch")->details.contains(QString::fromStdString(values))) << values;
    }
    EXPECT_EQ(names, namesIn("switch"));
}

TEST(TheHelp, FitsAScreenOf120Columns) {
    auto texts = help({});
    for (const auto& verb : verbs())
        texts += help(verb.name);
    for (const auto& line : texts.split(u'\n'))
        EXPECT_LE(line.size(), 120) << line.toStdString();
}

TEST(TheHelpOfAVerb, SaysHowItIsCalledAndWhatItMeans) {
    EXPECT_EQ(help("install"), "usage: sysextctl install ID SHORT BUILD [STATE]\n"
                               "\n"
                               "Puts a copy there without a request.\n"
                               "STATE is enabled (the default; the approval is recorded), waiting, disabled or "
                               "uninstalling.\n"
                               "Example: sysextctl install com.kelvra.ip-camera.cmio 2.0 2004\n");
}

} // namespace simulator::ctl
