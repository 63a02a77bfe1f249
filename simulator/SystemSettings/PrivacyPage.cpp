#include "simulator/SystemSettings/PrivacyPage.h"

#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace simulator::settings {

namespace {

QString statusOf(const CopyEntry& copy) {
    if (copy.condition == u"waiting") return QStringLiteral("Needs approval");
    if (copy.condition == u"enabled") return QStringLiteral("Enabled");
    if (copy.condition == u"disabled") return QStringLiteral("Disabled");
    if (copy.condition != u"uninstalling") return QStringLiteral("Preparing");
    return copy.state.startsWith("terminating") ? QStringLiteral("Being removed")
                                                : QStringLiteral("Removed at restart");
}

bool isOfCategory(const CopyEntry& copy, QStringView category) {
    return copy.category.endsWith(category);
}

QString shownName(const CopyEntry& copy) {
    return copy.name.isEmpty() ? copy.identifier : copy.name;
}

ExtensionContent contentOf(const CopyEntry& copy) {
    return {copy.number,
            copy.identifier,
            shownName(copy),
            copy.shortVersion + u'/' + copy.version,
            copy.condition,
            statusOf(copy),
            isOfCategory(copy, u".cmio")};
}

bool isQuestion(const RequestEntry& request) {
    return request.stage == u"authorization";
}

QString nameOf(const QString& identifier, const QList<CopyEntry>& copies) {
    const auto copy = std::find_if(copies.begin(), copies.end(), [&identifier](const CopyEntry& candidate) {
        return candidate.identifier == identifier;
    });
    return copy == copies.end() ? identifier : shownName(*copy);
}

} // namespace

PageContent pageOf(const QList<CopyEntry>& copies) {
    PageContent page{{{"Camera Extensions", "No camera extension is installed.", {}},
                      {"Driver Extensions", "No driver is installed.", {}},
                      {"Other Extensions", "No other extension is installed.", {}}}};
    auto& [cameras, drivers, others] = page;
    for (const auto& copy : copies) {
        auto& section = isOfCategory(copy, u".cmio")               ? cameras
                        : isOfCategory(copy, u".driver_extension") ? drivers
                                                                   : others;
        section.extensions.push_back(contentOf(copy));
    }
    return page;
}

QSet<QString> decisionsOf(const QList<CopyEntry>& copies, const QList<RequestEntry>& requests) {
    QSet<QString> decisions;
    for (const auto& copy : copies)
        if (copy.condition == u"waiting") decisions += QStringLiteral("copy %1").arg(copy.number);
    for (const auto& request : requests)
        if (request.stage == u"user" || isQuestion(request))
            decisions += QStringLiteral("request %1").arg(request.number);
    return decisions;
}

std::optional<QuestionContent> questionOf(const QList<RequestEntry>& requests, const QList<CopyEntry>& copies) {
    const auto open = std::find_if(requests.begin(), requests.end(), isQuestion);
    if (open == requests.end()) return std::nullopt;
    return QuestionContent{open->number, open->identifier, nameOf(open->identifier, copies),
                           QFileInfo{open->application}.completeBaseName(),
                           std::count_if(std::next(open), requests.end(), isQuestion)};
}

} // namespace simulator::settings
