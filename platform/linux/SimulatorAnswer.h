#pragma once

#include "platform/SystemExtensions.h"

#include <QString>

#include <functional>
#include <optional>

class QDBusMessage;

namespace platform {

/// What a request is answered, whoever answers it.
struct SimulatorAnswer {
    /// Tells the delegate, which is null where it is gone. Returns what it decides where the answer is a question: a
    /// delegate that is gone replaces nothing.
    using Deliver = std::function<std::optional<OSSystemExtensionReplacementAction>(
        OSSystemExtensionRequestDelegate* delegate, const OSSystemExtensionRequest& request)>;

    /// Nothing follows it.
    bool isLast;
    Deliver deliver;
    /// Of an activation or a deactivation alone.
    bool isFinish = false;
};

/// The answer of a request that failed for an error of the service's own domain with the code "unknown".
SimulatorAnswer unknownError(const QString& description);

/// One answer and the token of the request that it answers.
struct AddressedAnswer {
    QString token;
    SimulatorAnswer answer;
};

/// Reads a signal of the service's interface. A signal that is no answer, or that names no token, is null; one whose
/// arguments are not those of its name fails the request that it names.
std::optional<AddressedAnswer> readAnswer(const QDBusMessage& signal);

} // namespace platform
