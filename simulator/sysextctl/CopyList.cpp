#include "simulator/sysextctl/CopyList.h"

#include "simulator/sysextctl/Json.h"
#include "simulator/sysextctl/OneLine.h"

#include <QJsonObject>

#include <algorithm>

namespace simulator::ctl {

namespace {

const auto categoryPrefix = QStringLiteral("com.apple.system_extension.");

QString row(const CopyEntry& copy) {
    const auto star = [](bool shown) { return shown ? QStringLiteral("*") : QString{}; };
    const QStringList columns{
        star(copy.enabled), star(copy.active),
        oneLine(copy.team), oneLine(QStringLiteral("%1 (%2/%3)").arg(copy.identifier, copy.shortVersion, copy.version)),
        oneLine(copy.name), oneLine(QStringLiteral("[%1]").arg(copy.state)),
    };
    return columns.join(u'\t') + u'\n';
}

QString categoryHead(const QString& category) {
    return QStringLiteral("--- %1\nenabled\tactive\tteamID\tbundleID (version)\tname\t[state]\n")
        .arg(oneLine(category));
}

QJsonObject object(const CopyEntry& copy) {
    return {
        {"category", copy.category},     {"team", copy.team},
        {"identifier", copy.identifier}, {"shortVersion", copy.shortVersion},
        {"version", copy.version},       {"name", copy.name},
        {"state", copy.state},           {"condition", copy.condition},
        {"enabled", copy.enabled},       {"active", copy.active},
        {"number", copy.number},         {"application", copy.application},
    };
}

} // namespace

const QStringList& categories() {
    static const QStringList all{
        categoryPrefix + "cmio",
        categoryPrefix + "driver_extension",
        categoryPrefix + "endpoint_security",
        categoryPrefix + "network_extension",
    };
    return all;
}

QStringList shortCategories() {
    QStringList names;
    for (const auto& category : categories())
        names += category.mid(categoryPrefix.size());
    return names;
}

QString categoryNamed(const QString& word) {
    if (categories().contains(word)) return word;
    const auto full = categoryPrefix + word;
    return categories().contains(full) ? full : QString{};
}

QList<CopyEntry> copiesOf(const QList<CopyEntry>& copies, const QString& category) {
    if (category.isEmpty()) return copies;
    QList<CopyEntry> chosen;
    std::copy_if(copies.begin(), copies.end(), std::back_inserter(chosen),
                 [&category](const CopyEntry& copy) { return copy.category == category; });
    return chosen;
}

QString copiesAsText(const QList<CopyEntry>& copies) {
    auto text = QStringLiteral("%1 extension(s)\n").arg(copies.size());
    QString category;
    for (const auto& copy : copies) {
        if (copy.category != category) text += categoryHead(category = copy.category);
        text += row(copy);
    }
    return text;
}

QString copiesAsJson(const QList<CopyEntry>& copies) {
    return jsonLines(copies, object);
}

bool isInCondition(const QList<CopyEntry>& copies, const QString& identifier, const QString& condition) {
    const auto ofIdentifier = [&identifier](const CopyEntry& copy) { return copy.identifier == identifier; };
    if (condition == u"absent") return std::none_of(copies.begin(), copies.end(), ofIdentifier);
    return std::any_of(copies.begin(), copies.end(),
                       [&](const CopyEntry& copy) { return ofIdentifier(copy) && copy.condition == condition; });
}

} // namespace simulator::ctl
