#include "simulator/scenario/Texts.h"

#include <string_view>

namespace simulator::scenario {

namespace {

std::string quoted(std::string_view text) {
    std::string result{'"'};
    for (const char character : text) {
        if (character == '"' || character == '\\') result += '\\';
        result += character;
    }
    return result + '"';
}

/// The texts of a list, with commas between them.
template <typename Items, typename TextOfItem>
std::string joined(const Items& items, TextOfItem textOfItem) {
    std::string result;
    for (const auto& item : items) {
        if (!result.empty()) result += ", ";
        result += textOfItem(item);
    }
    return result;
}

struct TextOfAnswer {
    std::string operator()(std::monostate) const { return "nothing"; }
    std::string operator()(const NeedsApproval&) const { return "needs approval"; }
    std::string operator()(const Finished& finished) const { return "finished " + std::to_string(finished.result); }
    std::string operator()(const ReplacementAsked& asked) const {
        const Version existing{asked.existing.shortVersion, asked.existing.version};
        const Version replacement{asked.replacement.shortVersion, asked.replacement.version};
        return "asked to replace " + written(existing) + " by " + written(replacement);
    }
    std::string operator()(const Failure& failure) const {
        const std::string text = "failed " + std::to_string(failure.code) + " " + quoted(failure.description);
        return failure.domain == extensionErrorDomain ? text : text + " domain " + quoted(failure.domain);
    }
    std::string operator()(const FoundProperties& found) const {
        if (found.copies.empty()) return "found none";
        return "found " + joined(found.copies, [](const CopyRecord& record) {
                   return written(Version{record.shortVersion, record.version}) + " " + conditionOf(record);
               });
    }
};

} // namespace

std::string written(const Version& version) {
    return version.shortVersion + "/" + version.version;
}

std::string written(const AnswerBody& answer) {
    return std::visit(TextOfAnswer{}, answer);
}

std::string written(const std::vector<CopyThere>& copies) {
    if (copies.empty()) return "none";
    return joined(copies, [](const CopyThere& copy) {
        return written(copy.version) + " " + std::string{describe(copy.state).text};
    });
}

std::string written(const std::vector<RequestThere>& requests) {
    if (requests.empty()) return "none";
    return joined(requests, [](const RequestThere& request) { return request.identifier + " " + request.stage; });
}

std::string conditionOf(const CopyRecord& record) {
    if (record.isEnabled) return "enabled";
    if (record.isAwaitingUserApproval) return "waiting";
    return record.isUninstalling ? "uninstalling" : "disabled";
}

} // namespace simulator::scenario
