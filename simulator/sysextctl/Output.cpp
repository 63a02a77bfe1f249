#include "simulator/sysextctl/Output.h"

#include "simulator/core/Copy.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <algorithm>
#include <cstdio>

namespace simulator::ctl {

namespace {

// How it ends --------------------------------------------------------------------------------------------------------

bool breaksLine(QChar character) {
    return character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

QString lineOf(const QDBusError& error) {
    if (error.name().startsWith("org.freedesktop.DBus.Error.Spawn."))
        return QStringLiteral("the simulated extension service cannot be started; run sysextd to see why");
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
        return QStringLiteral("the simulated extension service is not running, and the session bus cannot start it");
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return QStringLiteral("the simulated extension service stopped or did not answer in time");
    default:
        return error.message().isEmpty() ? error.name() : error.message();
    }
}

// The lists ----------------------------------------------------------------------------------------------------------

constexpr std::string_view categoryPrefix = "com.apple.system_extension.";

QString rowOf(const QStringList& columns) {
    return columns.join(u'\t') + u'\n';
}

QString row(const CopyEntry& copy) {
    const auto star = [](bool shown) { return shown ? QStringLiteral("*") : QString{}; };
    return rowOf({star(copy.enabled), star(copy.active), oneLine(copy.team),
                  oneLine(QStringLiteral("%1 (%2/%3)").arg(copy.identifier, copy.shortVersion, copy.version)),
                  oneLine(copy.name), oneLine(QStringLiteral("[%1]").arg(copy.state))});
}

QString row(const RequestEntry& request) {
    return rowOf({QString::number(request.number), request.kind, oneLine(request.identifier),
                  QString::fromStdString(inSeconds(request.since)), oneLine(request.application),
                  QStringLiteral("[%1]").arg(request.stage)});
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

QJsonObject object(const RequestEntry& request) {
    return {{"number", request.number},
            {"client", request.client},
            {"token", request.token},
            {"application", request.application},
            {"kind", request.kind},
            {"identifier", request.identifier},
            {"stage", request.stage},
            {"since", request.since},
            {"sinceMilliseconds", request.since}};
}

template <typename Entry>
QString jsonLines(const QList<Entry>& entries) {
    QStringList lines;
    for (const auto& entry : entries)
        lines += QString::fromUtf8(QJsonDocument{object(entry)}.toJson(QJsonDocument::Compact));
    return lines.isEmpty() ? QStringLiteral("[]\n") : QStringLiteral("[\n%1\n]\n").arg(lines.join(",\n"));
}

} // namespace

QString oneLine(QString text) {
    for (auto& character : text)
        if (breaksLine(character)) character = u' ';
    return text;
}

CommandFailure failureOf(const QDBusError& error) {
    const QStringList misuses{errorPrefix + QString{"UnknownIdentifier"}, errorPrefix + QString{"InvalidArgument"}};
    return {misuses.contains(error.name()) ? exitCode::notUnderstood : exitCode::notDone, lineOf(error)};
}

void say(const QString& text) {
    const auto bytes = text.toUtf8();
    const auto length = static_cast<std::size_t>(bytes.size());
    const bool isWritten = std::fwrite(bytes.constData(), 1, length, stdout) == length && std::fflush(stdout) == 0;
    if (!isWritten) throw CommandFailure{exitCode::notDone, "cannot write to standard output"};
}

WordList shortCategories() {
    WordList names;
    for (const CategoryRow& category : categories)
        names.emplace_back(category.name.substr(categoryPrefix.size()));
    return names;
}

QString categoryNamed(const std::string& word) {
    for (const CategoryRow& category : categories) {
        const bool isIt = category.name == word || category.name.substr(categoryPrefix.size()) == word;
        if (isIt) return QString::fromStdString(std::string{category.name});
    }
    return {};
}

bool isIn(const QList<CopyEntry>& copies, const QString& identifier, const QString& state) {
    const auto ofIdentifier = [&](const CopyEntry& copy) { return copy.identifier == identifier; };
    if (state == u"absent") return std::none_of(copies.begin(), copies.end(), ofIdentifier);
    return std::any_of(copies.begin(), copies.end(), [&](const CopyEntry& copy) {
        return ofIdentifier(copy) && (copy.condition == state || copy.state == state);
    });
}

QString asText(const QList<CopyEntry>& copies) {
    auto text = QStringLiteral("%1 extension(s)\n").arg(copies.size());
    QString category;
    for (const auto& copy : copies) {
        if (copy.category != category) text += categoryHead(category = copy.category);
        text += row(copy);
    }
    return text;
}

QString asText(const QList<RequestEntry>& requests) {
    auto text = QStringLiteral("%1 request(s)\n").arg(requests.size());
    if (requests.isEmpty()) return text;
    text += "number\tkind\tbundleID\tsince (s)\tapplication\t[stage]\n";
    for (const auto& request : requests)
        text += row(request);
    return text;
}

QString asJson(const QList<CopyEntry>& copies) {
    return jsonLines(copies);
}

QString asJson(const QList<RequestEntry>& requests) {
    return jsonLines(requests);
}

QString asText(const EventEntry& event) {
    const auto orHyphen = [](const QString& text) { return text.isEmpty() ? QStringLiteral("-") : oneLine(text); };
    const auto time = event.time ? QString::fromStdString(inSeconds(*event.time)) : QString{};
    return rowOf({orHyphen(time), orHyphen(event.identifier), orHyphen(event.text), orHyphen(event.application)});
}

QString asJson(const EventEntry& event) {
    const auto orNull = [](const QString& text) { return text.isEmpty() ? QJsonValue{} : QJsonValue{text}; };
    const QJsonObject object{{"timeMilliseconds", event.time ? QJsonValue{*event.time} : QJsonValue{}},
                             {"identifier", orNull(event.identifier)},
                             {"event", event.text},
                             {"application", orNull(event.application)}};
    return QString::fromUtf8(QJsonDocument{object}.toJson(QJsonDocument::Compact)) + u'\n';
}

} // namespace simulator::ctl
