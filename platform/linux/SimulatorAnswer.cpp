#include "platform/linux/SimulatorAnswer.h"

#include <QDBusArgument>
#include <QDBusMessage>

#include <algorithm>
#include <array>
#include <utility>

namespace platform {

namespace {

OSSystemExtensionProperties readCopy(const QDBusArgument& argument) {
    QString identifier;
    QString shortVersion;
    QString version;
    OSSystemExtensionProperties copy;
    argument.beginStructure();
    argument >> identifier >> shortVersion >> version;
    argument >> copy.isEnabled >> copy.isAwaitingUserApproval >> copy.isUninstalling;
    argument.endStructure();
    copy.bundleIdentifier = identifier.toStdString();
    copy.bundleShortVersion = shortVersion.toStdString();
    copy.bundleVersion = version.toStdString();
    copy.description = "<" + copy.bundleIdentifier + " " + copy.bundleShortVersion + "/" + copy.bundleVersion + ">";
    return copy;
}

QDBusArgument argumentAt(const QDBusMessage& signal, const int index) {
    return signal.arguments().at(index).value<QDBusArgument>();
}

SimulatorAnswer readReplacementAsked(const QDBusMessage& signal) {
    return ReplacementAsked{readCopy(argumentAt(signal, 1)), readCopy(argumentAt(signal, 2))};
}

SimulatorAnswer readNeedsApproval(const QDBusMessage&) {
    return NeedsApproval{};
}

SimulatorAnswer readFinished(const QDBusMessage& signal) {
    return Finished{static_cast<OSSystemExtensionRequestResult>(signal.arguments().at(1).toLongLong())};
}

SimulatorAnswer readFailed(const QDBusMessage& signal) {
    const auto arguments = signal.arguments();
    return Error{arguments.at(1).toString().toStdString(), arguments.at(2).toLongLong(),
                 arguments.at(3).toString().toStdString()};
}

SimulatorAnswer readFoundProperties(const QDBusMessage& signal) {
    FoundProperties found;
    const auto copies = argumentAt(signal, 1);
    copies.beginArray();
    while (!copies.atEnd())
        found.copies.push_back(readCopy(copies));
    copies.endArray();
    return found;
}

struct AnswerSignal {
    const char* name;
    const char* signature;
    SimulatorAnswer (*read)(const QDBusMessage&);
};

constexpr std::array answerSignals{
    AnswerSignal{"ReplacementAsked", "s(sssbbb)(sssbbb)", readReplacementAsked},
    AnswerSignal{"NeedsApproval", "s", readNeedsApproval},
    AnswerSignal{"Finished", "sx", readFinished},
    AnswerSignal{"Failed", "ssxs", readFailed},
    AnswerSignal{"FoundProperties", "sa(sssbbb)", readFoundProperties},
};

Error malformed(const QDBusMessage& signal) {
    return unknownError(QStringLiteral("The extension service sent a malformed answer: %1 with arguments \"%2\".")
                            .arg(signal.member(), signal.signature()));
}

} // namespace

bool isLast(const SimulatorAnswer& answer) {
    return !std::holds_alternative<ReplacementAsked>(answer) && !std::holds_alternative<NeedsApproval>(answer);
}

Error unknownError(const QString& description) {
    return {std::string{OSSystemExtensionErrorDomain}, static_cast<std::int64_t>(OSSystemExtensionErrorCode::unknown),
            description.toStdString()};
}

std::optional<AddressedAnswer> readAnswer(const QDBusMessage& signal) {
    const auto known = std::find_if(answerSignals.begin(), answerSignals.end(), [&](const AnswerSignal& entry) {
        return signal.member() == QLatin1String{entry.name};
    });
    if (known == answerSignals.end() || !signal.signature().startsWith(u's')) return std::nullopt;
    const auto token = signal.arguments().at(0).toString();
    if (signal.signature() != QLatin1String{known->signature}) return AddressedAnswer{token, malformed(signal)};
    return AddressedAnswer{token, known->read(signal)};
}

} // namespace platform
