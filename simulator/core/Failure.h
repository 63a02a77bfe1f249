#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace simulator {

inline constexpr std::string_view extensionErrorDomain = "OSSystemExtensionErrorDomain";

namespace code {
inline constexpr std::int64_t unknown = 1;
inline constexpr std::int64_t missingEntitlement = 2;
inline constexpr std::int64_t unsupportedParentBundleLocation = 3;
inline constexpr std::int64_t extensionNotFound = 4;
inline constexpr std::int64_t extensionMissingIdentifier = 5;
inline constexpr std::int64_t duplicateExtensionIdentifier = 6;
inline constexpr std::int64_t unknownExtensionCategory = 7;
inline constexpr std::int64_t codeSignatureInvalid = 8;
inline constexpr std::int64_t validationFailed = 9;
inline constexpr std::int64_t forbiddenBySystemPolicy = 10;
inline constexpr std::int64_t requestCanceled = 11;
inline constexpr std::int64_t requestSuperseded = 12;
inline constexpr std::int64_t authorizationRequired = 13;
} // namespace code

/// Why a request failed, as its application hears it.
struct Failure {
    std::string domain;
    std::int64_t code = 0;
    std::string description;

    friend bool operator==(const Failure&, const Failure&) = default;
};

/// The description that an error of this code usually carries; a general one for an unknown code.
std::string_view usualDescription(std::int64_t code);
/// An error of the extensions' domain with its usual description.
Failure failureWith(std::int64_t code);
Failure failureWith(std::int64_t code, std::string_view description);
/// Of a request that fails because it came second, on a system that goes on with the first.
Failure failureOfSecond();

} // namespace simulator
