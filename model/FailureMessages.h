#pragma once

#include "platform/SystemExtensions.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace model {

struct FailureMessage {
    platform::OSSystemExtensionErrorCode code;
    std::string_view text;
};

inline constexpr std::array<FailureMessage, 13> failureMessages{{
    {platform::OSSystemExtensionErrorCode::unknown, "An unknown error occurred."},
    {platform::OSSystemExtensionErrorCode::missingEntitlement, "Missing a required entitlement."},
    {platform::OSSystemExtensionErrorCode::unsupportedParentBundleLocation, "Unsupported parent bundle location."},
    {platform::OSSystemExtensionErrorCode::extensionNotFound, "Extension not found."},
    {platform::OSSystemExtensionErrorCode::extensionMissingIdentifier, "Missing extension identifier."},
    {platform::OSSystemExtensionErrorCode::duplicateExtensionIdentifier, "Duplicate extension identifier."},
    {platform::OSSystemExtensionErrorCode::unknownExtensionCategory, "Unknown extension category."},
    {platform::OSSystemExtensionErrorCode::codeSignatureInvalid, "System extension signature is invalid."},
    {platform::OSSystemExtensionErrorCode::validationFailed, "System extension validation failed."},
    {platform::OSSystemExtensionErrorCode::forbiddenBySystemPolicy, "Activation forbidden by system policy."},
    {platform::OSSystemExtensionErrorCode::requestCanceled, "Request was canceled."},
    {platform::OSSystemExtensionErrorCode::requestSuperseded, "Superseded by request for same identifier."},
    {platform::OSSystemExtensionErrorCode::authorizationRequired, "Authorization required."},
}};

/// The message for an error code of the system extension domain.
constexpr std::string_view failureMessage(const std::int64_t code) {
    for (const auto& message : failureMessages) {
        if (static_cast<std::int64_t>(message.code) == code) return message.text;
    }
    return "Unexpected error.";
}

} // namespace model
