#pragma once

#include "platform/SystemExtensions.h"

#include <QString>

#include <optional>
#include <string>
#include <variant>
#include <vector>

class QDBusMessage;

namespace platform {

struct ReplacementAsked {
    OSSystemExtensionProperties existing;
    OSSystemExtensionProperties replacement;
};
struct NeedsApproval {};
struct Finished {
    OSSystemExtensionRequestResult result;
};
struct FoundProperties {
    std::vector<OSSystemExtensionProperties> copies;
};

/// What a request is answered. An Error is the answer of a request that failed, whoever made it fail.
using SimulatorAnswer = std::variant<ReplacementAsked, NeedsApproval, Finished, Error, FoundProperties>;

/// Nothing follows this answer.
bool isLast(const SimulatorAnswer& answer);

/// An error of the service's own domain with the code "unknown".
Error unknownError(const QString& description);

/// One answer and the token of the request that it answers.
struct AddressedAnswer {
    QString token;
    SimulatorAnswer answer;
};

/// Reads a signal of the service's interface. A signal that is no answer, or that names no token, is null; one whose
/// arguments are not those of its name fails the request that it names.
std::optional<AddressedAnswer> readAnswer(const QDBusMessage& signal);

} // namespace platform
