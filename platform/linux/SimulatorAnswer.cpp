#include "platform/linux/SimulatorAnswer.h"

#include <QDBusArgument>
#include <QDBusMessage>

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

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

using Delegate = OSSystemExtensionRequestDelegate;
using Request = OSSystemExtensionRequest;
using Arguments = const QVariantList&;

/// An answer that asks for nothing. `tell` is called only if there is a delegate.
template <typename Tell>
SimulatorAnswer notice(const bool isLast, Tell tell) {
    return {isLast, [tell = std::move(tell)](Delegate* const delegate, const Request& request) {
                if (delegate) tell(*delegate, request);
                return std::nullopt;
            }};
}

SimulatorAnswer failure(Error error) {
    return notice(true, [error = std::move(error)](auto& delegate, const auto& request) {
        delegate.requestDidFailWithError(request, error);
    });
}

SimulatorAnswer readReplacementAsked(Arguments arguments) {
    const auto existing = readCopy(arguments[1].value<QDBusArgument>());
    const auto replacement = readCopy(arguments[2].value<QDBusArgument>());
    return {false, [existing, replacement](Delegate* const delegate, const Request& request) {
                return delegate ? delegate->requestActionForReplacingExtension(request, existing, replacement)
                                : OSSystemExtensionReplacementAction::cancel;
            }};
}

SimulatorAnswer readNeedsApproval(Arguments) {
    return notice(false, [](auto& delegate, const auto& request) { delegate.requestNeedsUserApproval(request); });
}

SimulatorAnswer readFinished(Arguments arguments) {
    const auto result = static_cast<OSSystemExtensionRequestResult>(arguments[1].toLongLong());
    auto answer = notice(
        true, [result](auto& delegate, const auto& request) { delegate.requestDidFinishWithResult(request, result); });
    answer.isFinish = true;
    return answer;
}

SimulatorAnswer readFailed(Arguments arguments) {
    return failure(
        {arguments[1].toString().toStdString(), arguments[2].toLongLong(), arguments[3].toString().toStdString()});
}

SimulatorAnswer readFoundProperties(Arguments arguments) {
    const auto list = arguments[1].value<QDBusArgument>();
    std::vector<OSSystemExtensionProperties> copies;
    list.beginArray();
    while (!list.atEnd())
        copies.push_back(readCopy(list));
    list.endArray();
    return notice(true, [copies = std::move(copies)](auto& delegate, const auto& request) {
        delegate.requestFoundProperties(request, copies);
    });
}

struct AnswerSignal {
    const char* name;
    const char* signature;
    SimulatorAnswer (*read)(Arguments);
};

constexpr std::array answerSignals{
    AnswerSignal{"ReplacementAsked", "s(sssbbb)(sssbbb)", readReplacementAsked},
    AnswerSignal{"NeedsApproval", "s", readNeedsApproval},
    AnswerSignal{"Finished", "sx", readFinished},
    AnswerSignal{"Failed", "ssxs", readFailed},
    AnswerSignal{"FoundProperties", "sa(sssbbb)", readFoundProperties},
};

SimulatorAnswer malformed(const QDBusMessage& signal) {
    return unknownError(QStringLiteral("The extension service sent a malformed answer: %1 with arguments \"%2\".")
                            .arg(signal.member(), signal.signature()));
}

} // namespace

SimulatorAnswer unknownError(const QString& description) {
    return failure({std::string{OSSystemExtensionErrorDomain},
                    static_cast<std::int64_t>(OSSystemExtensionErrorCode::unknown), description.toStdString()});
}

std::optional<AddressedAnswer> readAnswer(const QDBusMessage& signal) {
    const auto known = std::find_if(answerSignals.begin(), answerSignals.end(), [&](const AnswerSignal& entry) {
        return signal.member() == QLatin1String{entry.name};
    });
    if (known == answerSignals.end() || !signal.signature().startsWith(u's')) return std::nullopt;
    const auto token = signal.arguments().at(0).toString();
    if (signal.signature() != QLatin1String{known->signature}) return AddressedAnswer{token, malformed(signal)};
    return AddressedAnswer{token, known->read(signal.arguments())};
}

} // namespace platform
