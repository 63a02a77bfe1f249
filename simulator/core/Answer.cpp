#include "simulator/core/Answer.h"

#include "simulator/core/State.h"
#include "simulator/core/Words.h"

#include <algorithm>

namespace simulator {

namespace {

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
        const std::string text = "failed " + std::to_string(failure.code) + " " + inQuotes(failure.description);
        return failure.domain == extensionErrorDomain ? text : text + " domain " + inQuotes(failure.domain);
    }
    std::string operator()(const FoundProperties& found) const {
        WordList copies;
        for (const CopyRecord& copy : found.copies)
            copies.push_back(versionOf(copy) + " " + conditionOf(copy));
        return "found " + (copies.empty() ? "none" : joined(copies));
    }
};

} // namespace

Failure failureWith(std::int64_t code, std::string_view description) {
    return {std::string{extensionErrorDomain}, code, std::string{description}};
}

Failure extensionNotFound() {
    return failureWith(code::extensionNotFound, "The extension was not found in the application.");
}

Failure requestCanceled() {
    return failureWith(code::requestCanceled, "The request was canceled.");
}

std::string textOf(const AnswerBody& answer) {
    return std::visit(TextOfAnswer{}, answer);
}

std::string textOf(const Fault& fault) {
    const auto* const row = std::find_if(requestWords.begin(), requestWords.end(),
                                         [&](const RequestWord& request) { return request.kind == fault.request; });
    const std::string request{row->word};
    if (fault.kind == Fault::Kind::delay) return request + " after " + inSeconds(fault.milliseconds) + "s";
    if (fault.kind != Fault::Kind::error) return request + " " + std::string{nameOf(fault.kind)};
    const auto& [domain, code, description] = fault.failure;
    std::string text = request + " " + std::to_string(code);
    if (!description.empty()) text += " " + inQuotes(description);
    return domain == extensionErrorDomain ? text : text + " --domain " + inQuotes(domain);
}

} // namespace simulator
