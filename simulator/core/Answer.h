#pragma once

#include "simulator/core/Failure.h"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace simulator {

/// A copy as its application hears of it.
struct CopyRecord {
    std::string identifier;
    std::string shortVersion;
    std::string version;
    bool isEnabled = false;
    bool isAwaitingUserApproval = false;
    bool isUninstalling = false;

    friend bool operator==(const CopyRecord&, const CopyRecord&) = default;
};

struct ReplacementAsked {
    CopyRecord existing;
    CopyRecord replacement;

    friend bool operator==(const ReplacementAsked&, const ReplacementAsked&) = default;
};

struct NeedsApproval {
    friend bool operator==(const NeedsApproval&, const NeedsApproval&) = default;
};

struct Finished {
    static constexpr std::int64_t completed = 0;
    static constexpr std::int64_t willCompleteAfterReboot = 1;

    std::int64_t result = completed;

    friend bool operator==(const Finished&, const Finished&) = default;
};

struct FoundProperties {
    /// Oldest first.
    std::vector<CopyRecord> copies;

    friend bool operator==(const FoundProperties&, const FoundProperties&) = default;
};

/// std::monostate: nothing is said.
using AnswerBody = std::variant<std::monostate, ReplacementAsked, NeedsApproval, Finished, Failure, FoundProperties>;

/// Something that one client is told about one of its requests.
struct Answer {
    std::string client;
    std::string token;
    AnswerBody body;

    friend bool operator==(const Answer&, const Answer&) = default;
};

} // namespace simulator
