#pragma once

#include "simulator/core/Answer.h"
#include "simulator/core/Copy.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The state of the simulated machine: requests, faults, the management profile, settings, and copies.

namespace simulator {

enum class RequestKind { activation, deactivation, properties };

/// As the bus calls them, in the order of the kinds.
inline constexpr std::array<std::string_view, 3> requestKinds{"activation", "deactivation", "properties"};

std::string_view nameOf(RequestKind kind);
std::optional<RequestKind> requestKindNamed(std::string_view name);

/// The word for the requests that a fault is ordered for; nothing: all of them.
struct RequestWord {
    std::string_view word;
    std::optional<RequestKind> kind;
};

inline constexpr std::array requestWords{
    RequestWord{"activate", RequestKind::activation},
    RequestWord{"deactivate", RequestKind::deactivation},
    RequestWord{"properties", RequestKind::properties},
    RequestWord{"any", std::nullopt},
};

/// A failure of one request, ordered in advance.
struct Fault {
    enum class Kind {
        error,
        silent,
        delay,
        hollow,   ///< finishes, but nothing runs
        noprompt, ///< waits for the user without saying so
        crash,    ///< the service crashes while it works on the request
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
    /// Which requests it can affect, in the order of their kinds.
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
/// Whether the fault, as ordered, affects such a request.
bool befalls(const Fault& fault, RequestKind request);
/// The words that order it after "fault next": "any 8 "broken" --domain "D"", "activate after 90.000s".
std::string textOf(const Fault& fault);
/// Whether there is any kind of request that it can affect.
bool isPossible(const Fault& fault);

enum class Stage { delayed, checking, validating, replacement, staging, user, authorization, removing, silent, ended };

std::string_view nameOf(Stage stage);
/// Whether a request at that stage continues without an answer.
bool worksByItself(Stage stage);

/// A request as the application submits it.
struct Submission {
    /// Any text that identifies the client.
    std::string client;
    /// The client's name for the request, unique among its open requests.
    std::string token;
    /// The bundle that the client is in; empty if it is in none.
    std::string application;
    RequestKind kind = RequestKind::properties;
    std::string identifier;
};

/// A submission on its way to an answer. It is lost when the service stops. Its client is empty once that left: what
/// was begun continues, but is not answered.
struct Request : Submission {
    explicit Request(Submission asked) : Submission{std::move(asked)} {}

    std::int64_t number = 0;
    Stage stage = Stage::checking;
    std::int64_t since = 0;
    /// When its next step is due, and its turn among those that are due at the same time.
    std::int64_t due = 0;
    std::int64_t turn = 0;
    /// The copy that it activates; 0 for none.
    std::int64_t copy = 0;
    std::int64_t result = 0;
    /// What it fails with at its first step.
    std::optional<Failure> doomed;
    /// When it was submitted, the extension did not belong to its application. It fails, and affects no other request.
    bool isForeign = false;
    std::optional<Fault> fault;
    /// Whether the extension's files match its seal, once that was found out; it is not due until then.
    std::optional<bool> sealMatches;
    bool awaitsSeal = false;

    bool isBefallenBy(Fault::Kind what) const { return fault && fault->kind == what; }
};

/// A management profile. An empty one leaves everything to the user.
struct Profile {
    using IdentifiersOfTeam = std::map<std::string, std::set<std::string>>;

    /// The property list that it was read from.
    std::string source;
    IdentifiersOfTeam allowedExtensions;
    std::set<std::string> allowedTeams;
    IdentifiersOfTeam removableExtensions;
    bool allowsUserOverrides = true;

    /// Without asking the user.
    bool allows(const std::string& team, const std::string& identifier) const;
    /// Without asking an administrator.
    bool letsRemove(const std::string& team, const std::string& identifier) const;
    /// Neither allowed nor left to the user.
    bool forbids(const std::string& team, const std::string& identifier) const;

    friend bool operator==(const Profile&, const Profile&) = default;
};

/// A behavior of the real system that public sources leave open.
enum class Switch { authorization, denial, driver, properties, refusal, restart, second, upgrade };

struct SwitchRow {
    Switch which;
    std::string_view name;
    std::string_view byDefault;
    std::string_view otherwise;
    std::string_view meaning;
};

// clang-format off
inline constexpr std::array switches{
    SwitchRow{Switch::authorization, "authorization", "asked",      "granted", "a removal: waits for an administrator, or is authorized at once"},
    SwitchRow{Switch::denial,        "denial",        "error",      "silence", "an activation that the user denies: fails with 11, or is never answered"},
    SwitchRow{Switch::driver,        "driver",        "idle",       "in-use",  "an enabled driver: stops at once, or runs until the restart"},
    SwitchRow{Switch::properties,    "properties",    "empty",      "error",   "the properties of an extension without a copy: an empty list, or error 4"},
    SwitchRow{Switch::refusal,       "refusal",       "13",         "11",      "the error of a removal that the administrator refuses"},
    SwitchRow{Switch::restart,       "restart",       "clean",      "lingers", "a terminated copy: gone after the restart, or one of them survives it once"},
    SwitchRow{Switch::second,        "second",        "supersedes", "fails",   "a second request for an extension: ends the first with 12, or itself fails with 12"},
    SwitchRow{Switch::upgrade,       "upgrade",       "approved",   "asked",   "another version of an approved extension: needs no approval, or needs it again"},
};
// clang-format on

const SwitchRow& describe(Switch which);
std::optional<Switch> switchNamed(std::string_view name);

/// The settings of the simulated machine. reset() leaves them as they are; resetAll() restores all but the folders.
struct Settings {
    std::vector<std::string> applicationsFolders{"/Applications"};
    bool developerMode = false;
    Profile profile;
    /// Only those that are not at their default.
    std::map<Switch, std::string> switches;

    std::string_view valueOf(Switch which) const;
    bool isDefault(Switch which) const { return switches.count(which) == 0; }
    /// value: one that the switch takes.
    void set(Switch which, std::string_view value);

    friend bool operator==(const Settings&, const Settings&) = default;
};

/// What the service stores.
struct State {
    /// By number, which is by age.
    std::map<std::int64_t, Copy> copies;
    /// Team and identifier of each extension that the user has approved.
    std::set<std::pair<std::string, std::string>> approvals;
    /// By number, in the order of the orders.
    std::map<std::int64_t, Fault> faults;
    /// Every extension that ever had a copy, by identifier.
    std::map<std::string, Extension> seen;
    /// Every bundle that made a request.
    std::set<std::string> applications;
    Settings settings;
    /// The simulated clock, in milliseconds.
    std::int64_t clock = 0;
    /// The last number given to a copy, a request or a fault.
    std::int64_t lastNumber = 0;

    friend bool operator==(const State&, const State&) = default;
};

} // namespace simulator
