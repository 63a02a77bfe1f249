#include "simulator/core/Answer.h"

#include "simulator/core/Copy.h"
#include "simulator/core/Words.h"

#include <array>

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

std::string quoted(const std::string& text) {
    std::string result{'"'};
    for (const char character : text) {
        if (character == '"' || character == '\\') result += '\\';
        result += character;
    }
    return result + '"';
}

std::string versionOf(const CopyRecord& copy) {
    return textOf(Version{copy.shortVersion, copy.version});
}

/// The one word for its three flags.
std::string conditionOf(const CopyRecord& copy) {
    if (copy.isEnabled) return "enabled";
    if (copy.isAwaitingUserApproval) return "waiting";
    return copy.isUninstalling ? "uninstalling" : "disabled";
}

struct TextOfAnswer {
    std::string operator()(std::monostate) const { return "nothing"; }
    std::string operator()(const NeedsApproval&) const { return "needs approval"; }
    std::string operator()(const Finished& finished) const { return "finished " + std::to_string(finished.result); }
    std::string operator()(const ReplacementAsked& asked) const {
        return "asked to replace " + versionOf(asked.existing) + " by " + versionOf(asked.replacement);
    }
    std::string operator()(const Failure& failure) const {
        const std::string text = "failed " + std::to_string(failure.code) + " " + quoted(failure.description);
        return failure.domain == extensionErrorDomain ? text : text + " domain " + quoted(failure.domain);
    }
    std::string operator()(const FoundProperties& found) const {
        WordList copies;
        for (const CopyRecord& copy : found.copies)
            copies.push_back(versionOf(copy) + " " + conditionOf(copy));
        return "found " + (copies.empty() ? "none" : joined(copies));
    }
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

std::string textOf(const AnswerBody& answer) {
    return std::visit(TextOfAnswer{}, answer);
}

} // namespace simulator
