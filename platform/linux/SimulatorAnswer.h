#pragma once

#include "platform/SystemExtensions.h"

#include <QString>

#include <functional>
#include <optional>

class QDBusMessage;

namespace platform {

/// One answer to a request, from the service or from the manager itself.
struct SimulatorAnswer {
    /// Calls the delegate, unless it is null. Returns the action if the answer asks for one: cancel without a delegate.
    using Deliver = std::function<std::optional<OSSystemExtensionReplacementAction>(
        OSSystemExtensionRequestDelegate* delegate, const OSSystemExtensionRequest& request)>;

    /// Ends the request.
    bool isLast;
    Deliver deliver;
    /// Of an activation or a deactivation alone.
    bool isFinish = false;
};

/// A failure with the code "unknown" of the system extension error domain.
SimulatorAnswer unknownError(const QString& description);

/// An answer and the token of its request.
struct AddressedAnswer {
    QString token;
    SimulatorAnswer answer;
};

/// Reads a signal of the service's interface; null if it is not an answer or has no token. A signal with unexpected
/// arguments becomes a failure of the request.
std::optional<AddressedAnswer> readAnswer(const QDBusMessage& signal);

} // namespace platform
