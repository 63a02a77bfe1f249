#include "simulator/play/AnswerJson.h"

#include "simulator/bus/CopyReport.h"

#include <QDBusArgument>
#include <QJsonArray>

namespace simulator::play {

namespace {

QJsonObject jsonOf(const CopyReport& copy) {
    return {
        {"identifier", copy.identifier}, {"shortVersion", copy.shortVersion},     {"version", copy.version},
        {"enabled", copy.enabled},       {"awaiting", copy.awaitingUserApproval}, {"uninstalling", copy.uninstalling}};
}

QJsonArray jsonOf(const QList<CopyReport>& copies) {
    QJsonArray array;
    for (const CopyReport& copy : copies)
        array.push_back(jsonOf(copy));
    return array;
}

CopyRecord recordOf(const QJsonObject& json) {
    return {json["identifier"].toString().toStdString(),
            json["shortVersion"].toString().toStdString(),
            json["version"].toString().toStdString(),
            json["enabled"].toBool(),
            json["awaiting"].toBool(),
            json["uninstalling"].toBool()};
}

FoundProperties propertiesOf(const QJsonArray& json) {
    FoundProperties found;
    for (const auto& copy : json)
        found.copies.push_back(recordOf(copy.toObject()));
    return found;
}

} // namespace

QJsonObject jsonOf(const QDBusMessage& signal) {
    const QVariantList values = signal.arguments();
    const QString said = signal.member();
    QJsonObject json{{"said", said}, {"token", values.value(0).toString()}};
    if (said == "ReplacementAsked") {
        json["existing"] = jsonOf(qdbus_cast<CopyReport>(values.value(1)));
        json["replacement"] = jsonOf(qdbus_cast<CopyReport>(values.value(2)));
    } else if (said == "Finished") {
        json["result"] = values.value(1).toLongLong();
    } else if (said == "Failed") {
        json["domain"] = values.value(1).toString();
        json["code"] = values.value(2).toLongLong();
        json["description"] = values.value(3).toString();
    } else if (said == "FoundProperties") {
        json["copies"] = jsonOf(qdbus_cast<QList<CopyReport>>(values.value(1)));
    }
    return json;
}

AnswerBody answerOf(const QJsonObject& json) {
    const QString said = json["said"].toString();
    if (said == "NeedsApproval") return NeedsApproval{};
    if (said == "Finished") return Finished{json["result"].toInteger()};
    if (said == "FoundProperties") return propertiesOf(json["copies"].toArray());
    if (said == "ReplacementAsked") {
        return ReplacementAsked{recordOf(json["existing"].toObject()), recordOf(json["replacement"].toObject())};
    }
    if (said == "Failed") {
        return Failure{json["domain"].toString().toStdString(), json["code"].toInteger(),
                       json["description"].toString().toStdString()};
    }
    return {};
}

} // namespace simulator::play
