#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

// What the machine says: refusals to its caller, answers to applications, and events to whoever watches.

namespace simulator {

/// Why the machine refused a call, which changed nothing.
struct Refusal {
    enum class Kind { nothingWaiting, unknownIdentifier, invalidArgument, limitExceeded, forbiddenByProfile };

    Kind kind = Kind::invalidArgument;
    /// One clear line.
    std::string message;

    friend bool operator==(const Refusal&, const Refusal&) = default;
};

/// Nothing: it was done.
using Verdict = std::optional<Refusal>;
inline constexpr std::nullopt_t done = std::nullopt;

inline Refusal invalid(std::string message) {
    return {Refusal::Kind::invalidArgument, std::move(message)};
}

inline Refusal tooMany(std::string message) {
    return {Refusal::Kind::limitExceeded, std::move(message)};
}

/// Limits far above what an honest client needs.
namespace limits {
inline constexpr std::size_t token = 128;
inline constexpr std::size_t identifier = 255;
inline constexpr std::size_t version = 4096;
inline constexpr std::size_t path = 4096;
inline constexpr std::size_t domain = 255;
inline constexpr std::size_t description = 65536;
inline constexpr std::size_t profile = 1048576;
inline constexpr std::size_t requestsOfClient = 256;
inline constexpr std::size_t requests = 4096;
inline constexpr std::size_t copies = 20000;
inline constexpr std::size_t faults = 1000;
inline constexpr std::size_t folders = 64;
inline constexpr std::size_t applications = 1000;
/// Of the clock and of delays, in milliseconds: a thousand years.
inline constexpr std::int64_t time = std::int64_t{1000} * 366 * 24 * 3600 * 1000;
} // namespace limits

/// Whether the text has at most that many bytes and no control characters.
inline constexpr bool isPlain(std::string_view text, std::size_t longest) {
    if (text.size() > longest) return false;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte == 0x7f) return false;
    }
    return true;
}

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

/// An error of the extensions' domain.
Failure failureWith(std::int64_t code, std::string_view description);
Failure extensionNotFound();
Failure requestCanceled();

/// A copy as it is reported to its application.
struct CopyRecord {
    std::string identifier;
    std::string shortVersion;
    std::string version;
    bool isEnabled = false;
    bool isAwaitingUserApproval = false;
    bool isUninstalling = false;
};

struct ReplacementAsked {
    CopyRecord existing;
    CopyRecord replacement;
};

struct NeedsApproval {};

struct Finished {
    static constexpr std::int64_t completed = 0;
    static constexpr std::int64_t willCompleteAfterReboot = 1;

    std::int64_t result = completed;
};

struct FoundProperties {
    /// Oldest first.
    std::vector<CopyRecord> copies;
};

/// std::monostate: nothing is said.
using AnswerBody = std::variant<std::monostate, ReplacementAsked, NeedsApproval, Finished, Failure, FoundProperties>;

/// An answer to one client about one of its requests.
struct Answer {
    std::string client;
    std::string token;
    AnswerBody body;
};

/// The answer as a scenario writes it: "needs approval", "finished 0", "failed 8 "why"", "asked to
/// replace 2.1/2105 by 2.2/2206", "found 2.1/2105 enabled"; "nothing" of one that says nothing.
std::string textOf(const AnswerBody& answer);

/// One line for "sysextctl watch".
struct Event {
    std::int64_t time = 0;
    /// The extension; empty if the event is about the whole machine.
    std::string identifier;
    std::string text;
    /// The bundle that asked for it, or that the copy came from; empty if there is none.
    std::string application;
};

/// The seal of an extension that is being validated. The caller compares it with the extension's files and, at any time
/// later, passes the result to Machine::sealChecked().
struct SealToCheck {
    std::int64_t request = 0;
    /// The extension's folder.
    std::string extension;
};

/// What the machine has to say since the last call. The caller first stores the state, then sends this.
struct Outbox {
    std::vector<Answer> answers;
    std::vector<Event> events;
    /// The numbers of the copies that were added, changed, or removed.
    std::set<std::int64_t> copies;
    std::vector<SealToCheck> seals;
    /// A request came to another stage, even if there is no event about it.
    bool moved = false;
    bool restarting = false;
    /// An ordered fault: the service must end here.
    bool crashed = false;
};

} // namespace simulator
