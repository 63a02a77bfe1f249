#include "simulator/sysextctl/FaultOrder.h"

#include "simulator/core/RequestKind.h"
#include "simulator/scenario/FaultWords.h"
#include "simulator/sysextctl/Arguments.h"

#include <utility>

namespace simulator::ctl {

namespace {

QStringList asList(const std::vector<std::string>& words) {
    QStringList list;
    for (const auto& word : words)
        list += QString::fromStdString(word);
    return list;
}

/// How the service calls the kind of request that the word stands for.
QString kindOfRequest(const QString& word) {
    for (const auto& known : scenario::requestWords) {
        if (word == known.word && known.kind) return QString::fromStdString(std::string{nameOf(*known.kind)});
    }
    return word;
}

OrderFault readError(const Arguments& arguments, QString kind, QString domain) {
    auto isNumber = false;
    const auto code = arguments.at(2).toLongLong(&isNumber);
    if (!isNumber)
        arguments.reject("fault", arguments.at(2), {"an error code", "after", "silent", "hollow", "noprompt", "crash"});
    return {std::move(kind), "error", std::move(domain), code, arguments.count() == 4 ? arguments.at(3) : QString{}, 0};
}

bool takesNothing(const QString& fault) {
    return QStringList{"silent", "hollow", "noprompt", "crash"}.contains(fault);
}

} // namespace

Command readFault(const Verb& verb, const QStringList& given) {
    Arguments arguments{verb, given};
    const auto domain = arguments.takeValue("--domain");
    arguments.expect(3, 4);
    if (arguments.at(0) != u"next") arguments.rejectUse();
    const auto& request = arguments.oneOf(1, "kind of request", asList(scenario::requestWordsFor(Fault::Kind::error)));
    auto kind = kindOfRequest(request);
    const auto& fault = arguments.at(2);
    const auto isError = fault != u"after" && !takesNothing(fault);
    if (isError) return readError(arguments, std::move(kind), domain.value_or(QString{}));
    if (domain || arguments.count() != (takesNothing(fault) ? 3 : 4)) arguments.rejectUse();
    if (const auto known = faultKindNamed(fault.toStdString())) {
        arguments.oneOf(1, "kind of " + fault + " request", asList(scenario::requestWordsFor(*known)));
    }
    if (takesNothing(fault)) return OrderFault{std::move(kind), fault, {}, 0, {}, 0};
    return OrderFault{std::move(kind), "delay", {}, 0, {}, arguments.durationAt(3)};
}

} // namespace simulator::ctl
