#pragma once

#include "simulator/core/Answer.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// What applications ask, and what goes wrong with it.

namespace simulator {

enum class RequestKind { activation, deactivation, properties };

/// As the bus calls them, in the order of the kinds.
inline constexpr std::array<std::string_view, 3> requestKinds{"activation", "deactivation", "properties"};

std::string_view nameOf(RequestKind kind);
std::optional<RequestKind> requestKindNamed(std::string_view name);

/// Something that goes wrong with one request, ordered beforehand.
struct Fault {
    enum class Kind {
        error,
        silent,
        delay,
        hollow,   ///< finishes, and nothing runs
        noprompt, ///< waits for the user without saying so
        crash,    ///< the service dies when it has begun
    };

    Kind kind = Kind::error;
    /// The kind of request that it waits for; nothing: any.
    std::optional<RequestKind> request;
    /// Of an error.
    Failure failure;
    /// Of a delay.
    std::int64_t milliseconds = 0;

    friend bool operator==(const Fault&, const Fault&) = default;
};

struct FaultRow {
    Fault::Kind kind;
    std::string_view name;
    /// Which requests it can befall, in the order of their kinds.
    std::array<bool, requestKinds.size()> befalls;
};

inline constexpr std::array faultKinds{
    FaultRow{Fault::Kind::error, "error", {true, true, true}},
    FaultRow{Fault::Kind::silent, "silent", {true, true, true}},
    FaultRow{Fault::Kind::delay, "delay", {true, true, true}},
    FaultRow{Fault::Kind::hollow, "hollow", {true, true, false}},
    FaultRow{Fault::Kind::noprompt, "noprompt", {true, false, false}},
    FaultRow{Fault::Kind::crash, "crash", {true, true, true}},
};

std::string_view nameOf(Fault::Kind kind);
std::optional<Fault::Kind> faultKindNamed(std::string_view name);
/// Whether the fault, as it was ordered, befalls such a request.
bool befalls(const Fault& fault, RequestKind request);
/// Whether there is any kind of request that it can befall.
bool isPossible(const Fault& fault);

/// Where a request stands.
enum class Stage { delayed, checking, validating, replacement, staging, user, authorization, removing, silent, ended };

/// As it is listed.
std::string_view nameOf(Stage stage);

/// Whether a request that stands there goes on without anyone's word.
bool worksByItself(Stage stage);

/// One question of an application. It is not kept over a stop of the service.
struct Request {
    std::int64_t number = 0;
    /// Empty once the client is gone: what was begun goes on, and no one hears of it.
    std::string client;
    std::string token;
    /// The bundle of the client; empty if it runs from none.
    std::string application;
    RequestKind kind = RequestKind::properties;
    std::string identifier;
    Stage stage = Stage::checking;
    std::int64_t since = 0;
    /// When its next step is due, and its turn among those that are due at the same time.
    std::int64_t due = 0;
    std::int64_t turn = 0;
    /// The copy that it activates; 0 for none.
    std::int64_t copy = 0;
    std::int64_t result = 0;
    /// What it fails with as soon as it is looked at.
    std::optional<Failure> doomed;
    /// When it was made, the extension was not its program's to ask for. It fails, and is in no one's way until then.
    bool isForeign = false;
    std::optional<Fault> fault;
    /// Whether the extension's files match its seal, once that was found out; it is not due until then.
    std::optional<bool> sealMatches;
    bool awaitsSeal = false;

    bool isBefallenBy(Fault::Kind what) const { return fault && fault->kind == what; }
};

} // namespace simulator
