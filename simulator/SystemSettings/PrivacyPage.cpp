#include "simulator/SystemSettings/PrivacyPage.h"

#include <QFileInfo>

#include <algorithm>

namespace simulator::settings {

namespace {

Standing standingOf(const QString& condition) {
    if (condition == u"waiting") return Standing::waiting;
    if (condition == u"enabled") return Standing::enabled;
    if (condition == u"disabled") return Standing::disabled;
    if (condition == u"uninstalling") return Standing::dying;
    return Standing::preparing;
}

QString statusOf(const CopyEntry& copy) {
    switch (standingOf(copy.condition)) {
    case Standing::waiting:
        return QStringLiteral("Waiting for approval");
    case Standing::enabled:
        return QStringLiteral("Enabled");
    case Standing::disabled:
        return QStringLiteral("Disabled");
    case Standing::dying:
        return copy.state.startsWith("terminating") ? QStringLiteral("Being removed")
                                                    : QStringLiteral("Removed at restart");
    case Standing::preparing:
        break;
    }
    return QStringLiteral("Preparing");
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
            standingOf(copy.condition),
            statusOf(copy),
            isOfCategory(copy, u".cmio")};
}

QString nameOf(const QString& identifier, const QList<CopyEntry>& copies) {
    const auto copy = std::find_if(copies.begin(), copies.end(), [&identifier](const CopyEntry& candidate) {
        return candidate.identifier == identifier;
    });
    return copy == copies.end() ? identifier : shownName(*copy);
}

} // namespace

PageContent pageOf(const QList<CopyEntry>& copies) {
    PageContent page{{"Camera Extensions", "No camera extension is installed.", {}},
                     {"Driver Extensions", "No driver is installed.", {}},
                     {"Other Extensions", {}, {}}};
    for (const auto& copy : copies) {
        auto& section = isOfCategory(copy, u".cmio")               ? page.cameras
                        : isOfCategory(copy, u".driver_extension") ? page.drivers
                                                                   : page.others;
        section.extensions.push_back(contentOf(copy));
    }
    return page;
}

std::optional<QuestionContent> questionOf(const QList<RequestEntry>& requests, const QList<CopyEntry>& copies) {
    const auto open = std::find_if(requests.begin(), requests.end(),
                                   [](const RequestEntry& request) { return request.stage == u"authorization"; });
    if (open == requests.end()) return std::nullopt;
    return QuestionContent{open->identifier, nameOf(open->identifier, copies),
                           QFileInfo{open->application}.completeBaseName()};
}

} // namespace simulator::settings
