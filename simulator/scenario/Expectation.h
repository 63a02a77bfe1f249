#pragma once

#include "simulator/core/Answer.h"
#include "simulator/scenario/Mac.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace simulator::scenario {

struct ExpectedQuestion {
    Version existing;
    Version replacement;
};

struct ExpectedFailure {
    std::int64_t code = 0;
    std::string domain;
    /// Nothing: any.
    std::optional<std::string> description;
};

struct ExpectedProperties {
    struct Record {
        Version version;
        /// The one word for the three flags: "enabled", "waiting", "disabled" or "uninstalling".
        std::string condition;
    };

    /// Oldest first.
    std::vector<Record> records;
};

using ExpectedAnswer = std::variant<NeedsApproval, ExpectedQuestion, Finished, ExpectedFailure, ExpectedProperties>;

/// The next answer that an application was given.
struct ExpectAnswer {
    std::string application;
    ExpectedAnswer answer;
    /// Which request it is about; nothing: any.
    std::optional<std::string> request;
};

/// No answer that was not expected yet; to one application, or to all of them.
struct ExpectNothing {
    std::optional<std::string> application;
};

/// Some copy of the extension; others may be there.
struct ExpectCopy {
    std::string identifier;
    CopyThere copy;
};

/// All copies of the extension, oldest first.
struct ExpectCopies {
    std::string identifier;
    std::vector<CopyThere> copies;
};

/// How many requests have not ended.
struct ExpectRequests {
    std::size_t count = 0;
};

/// Some request for the extension; others may be there.
struct ExpectRequest {
    std::string identifier;
    std::string stage;
};

using Expectation = std::variant<ExpectAnswer, ExpectNothing, ExpectCopy, ExpectCopies, ExpectRequests, ExpectRequest>;

bool matches(const ExpectedAnswer& expected, const AnswerBody& heard);

} // namespace simulator::scenario
