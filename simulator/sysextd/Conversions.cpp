#include "simulator/sysextd/Conversions.h"

#include "simulator/bus/Names.h"

#include <QVariant>

#include <algorithm>
#include <tuple>
#include <vector>

namespace simulator {

namespace {

QString text(std::string_view view) {
    return QString::fromUtf8(view.data(), static_cast<qsizetype>(view.size()));
}

CopyEntry entryOf(const Copy& copy) {
    const CopyStateRow& row = describe(copy.state);
    CopyEntry entry;
    entry.category = text(nameOf(copy.extension.category));
    entry.team = text(copy.extension.team);
    entry.identifier = text(copy.extension.identifier);
    entry.shortVersion = text(copy.version.shortVersion);
    entry.version = text(copy.version.version);
    entry.name = text(copy.extension.name);
    entry.state = text(row.text);
    entry.condition = text(row.condition);
    entry.enabled = row.enabledStar;
    entry.active = row.activeStar;
    entry.number = copy.number;
    entry.application = text(copy.application);
    return entry;
}

CopyReport reportOf(const CopyRecord& record) {
    return {text(record.identifier), text(record.shortVersion),     text(record.version),
            record.isEnabled,        record.isAwaitingUserApproval, record.isUninstalling};
}

/// The name of the signal and what follows the token in it.
struct Signal {
    QString name;
    QVariantList arguments;
};

struct SignalOfBody {
    Signal operator()(std::monostate) const { return {}; }
    Signal operator()(const ReplacementAsked& asked) const {
        return {"ReplacementAsked",
                {QVariant::fromValue(reportOf(asked.existing)), QVariant::fromValue(reportOf(asked.replacement))}};
    }
    Signal operator()(const NeedsApproval&) const { return {"NeedsApproval", {}}; }
    Signal operator()(const Finished& finished) const {
        return {"Finished", {static_cast<qlonglong>(finished.result)}};
    }
    Signal operator()(const Failure& failure) const {
        return {"Failed", {text(failure.domain), static_cast<qlonglong>(failure.code), text(failure.description)}};
    }
    Signal operator()(const FoundProperties& found) const {
        QList<CopyReport> reports;
        for (const CopyRecord& record : found.copies)
            reports.push_back(reportOf(record));
        return {"FoundProperties", {QVariant::fromValue(reports)}};
    }
};

} // namespace

QList<CopyEntry> copyEntries(const State& state) {
    std::vector<const Copy*> copies;
    for (const auto& [number, copy] : state.copies)
        copies.push_back(&copy);
    std::sort(copies.begin(), copies.end(), [](const Copy* left, const Copy* right) {
        const auto key = [](const Copy& copy) {
            return std::tuple{nameOf(copy.extension.category), std::string_view{copy.extension.identifier},
                              copy.number};
        };
        return key(*left) < key(*right);
    });
    QList<CopyEntry> entries;
    for (const Copy* const copy : copies)
        entries.push_back(entryOf(*copy));
    return entries;
}

QList<RequestEntry> requestEntries(const Machine& machine) {
    QList<RequestEntry> entries;
    for (const auto& [number, request] : machine.requests()) {
        entries.push_back({number, text(request.client), text(request.token), text(request.application),
                           text(nameOf(request.kind)), text(request.identifier), text(nameOf(request.stage)),
                           request.since});
    }
    return entries;
}

QList<SwitchEntry> switchEntries(const Settings& settings) {
    QList<SwitchEntry> entries;
    for (const SwitchRow& row : switches) {
        entries.push_back({text(row.name),
                           text(settings.valueOf(row.which)),
                           {text(row.byDefault), text(row.otherwise)},
                           text(row.meaning)});
    }
    return entries;
}

QDBusMessage messageOf(const Answer& answer) {
    const Signal signal = std::visit(SignalOfBody{}, answer.body);
    QDBusMessage message =
        QDBusMessage::createTargetedSignal(text(answer.client), objectPath, interfaceName, signal.name);
    message.setArguments(QVariantList{text(answer.token)} + signal.arguments);
    return message;
}

QString errorName(Refusal::Kind kind) {
    const QString prefix{errorPrefix};
    switch (kind) {
    case Refusal::Kind::nothingWaiting:
        return prefix + "NothingWaiting";
    case Refusal::Kind::unknownIdentifier:
        return prefix + "UnknownIdentifier";
    case Refusal::Kind::invalidArgument:
        return prefix + "InvalidArgument";
    case Refusal::Kind::limitExceeded:
        return prefix + "LimitExceeded";
    case Refusal::Kind::forbiddenByProfile:
        return prefix + "ForbiddenByProfile";
    }
    return prefix + "InvalidArgument";
}

} // namespace simulator
