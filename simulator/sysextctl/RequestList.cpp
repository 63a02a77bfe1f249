#include "simulator/sysextctl/RequestList.h"

#include "simulator/sysextctl/Duration.h"
#include "simulator/sysextctl/Json.h"
#include "simulator/sysextctl/OneLine.h"

namespace simulator::ctl {

namespace {

QString row(const RequestEntry& request) {
    const QStringList columns{
        QString::number(request.number), request.kind,
        oneLine(request.identifier),     inSeconds(request.since),
        oneLine(request.application),    QStringLiteral("[%1]").arg(request.stage),
    };
    return columns.join(u'\t') + u'\n';
}

QJsonObject object(const RequestEntry& request) {
    return {
        {"number", request.number}, {"client", request.client},
        {"token", request.token},   {"application", request.application},
        {"kind", request.kind},     {"identifier", request.identifier},
        {"stage", request.stage},   {"since", request.since},
    };
}

} // namespace

QString requestsAsText(const QList<RequestEntry>& requests) {
    auto text = QStringLiteral("%1 request(s)\n").arg(requests.size());
    if (requests.isEmpty()) return text;
    text += "number\tkind\tbundleID\tsince (s)\tapplication\t[stage]\n";
    for (const auto& request : requests)
        text += row(request);
    return text;
}

QString requestsAsJson(const QList<RequestEntry>& requests) {
    return jsonLines(requests, object);
}

} // namespace simulator::ctl
