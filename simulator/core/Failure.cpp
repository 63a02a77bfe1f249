#include "simulator/core/Failure.h"

namespace simulator {

namespace {

struct Description {
    std::int64_t code;
    std::string_view text;
};

constexpr std::array descriptions{
    Description{code::unknown, "An internal error occurred."},
    Description{code::missingEntitlement, "The application may not install system extensions."},
    Description{code::unsupportedParentBundleLocation, "The application must be in an Applications folder."},
    Description{code::extensionNotFound, "The extension was not found in the application."},
    Description{code::extensionMissingIdentifier, "The extension has no bundle identifier."},
    Description{code::duplicateExtensionIdentifier, "The application holds several extensions of this identifier."},
    Description{code::unknownExtensionCategory, "The extension is of no known category."},
    Description{code::codeSignatureInvalid, "The extension's signature is not valid."},
    Description{code::validationFailed, "The extension is not valid for its category."},
    Description{code::forbiddenBySystemPolicy, "The system's policy forbids the extension."},
    Description{code::requestCanceled, "The request was cancelled."},
    Description{code::requestSuperseded, "A later request for the same extension took the place of this one."},
    Description{code::authorizationRequired, "An administrator did not authorise the request."},
};

} // namespace

std::string_view usualDescription(std::int64_t code) {
    for (const Description& row : descriptions) {
        if (row.code == code) return row.text;
    }
    return "An error occurred.";
}

Failure failureWith(std::int64_t code) {
    return failureWith(code, usualDescription(code));
}

Failure failureWith(std::int64_t code, std::string_view description) {
    return {std::string{extensionErrorDomain}, code, std::string{description}};
}

Failure failureOfSecond() {
    return failureWith(code::requestSuperseded, "An earlier request for the same extension is still open.");
}

} // namespace simulator
