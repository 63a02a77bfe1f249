#pragma once

#include "simulator/core/Copy.h"
#include "simulator/core/Request.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What the simulated machine knows: its management profile, what is decided where no source settles it, and its copies.

namespace simulator {

/// A management profile: what the machine's owner allows. An empty one leaves everything to the user.
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

/// A behaviour on which what is known of the real system leaves a choice.
enum class Switch {
    authorization,
    denial,
    driver,
    properties,
    refusal,
    restart,
    second,
    upgrade,
};

struct SwitchRow {
    Switch which;
    std::string_view name;
    std::string_view byDefault;
    std::string_view otherwise;
    std::string_view meaning;
};

// clang-format off
inline constexpr std::array switches{
    SwitchRow{Switch::authorization, "authorization", "asked",      "granted", "the administrator's word on a removal: asked for, or given at once"},
    SwitchRow{Switch::denial,        "denial",        "error",      "silence", "an activation that the user denies: fails with 11, or is never answered"},
    SwitchRow{Switch::driver,        "driver",        "idle",       "in-use",  "an enabled driver: can be stopped at once, or runs on until the restart"},
    SwitchRow{Switch::properties,    "properties",    "empty",      "error",   "the properties of an extension without a copy: an empty list, or error 4"},
    SwitchRow{Switch::refusal,       "refusal",       "13",         "11",      "the error of a removal that the administrator refuses"},
    SwitchRow{Switch::restart,       "restart",       "clean",      "lingers", "a terminated copy: gone with the restart, or one of them outlives it once"},
    SwitchRow{Switch::second,        "second",        "supersedes", "fails",   "a second request for an extension: ends the first with 12, or fails with 12"},
    SwitchRow{Switch::upgrade,       "upgrade",       "approved",   "asked",   "another version of an approved extension: needs no approval, or asks again"},
};
// clang-format on

const SwitchRow& describe(Switch which);
std::optional<Switch> switchNamed(std::string_view name);

/// How the simulated machine is set up. A reset leaves it as it is.
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

/// Everything about the simulated machine that outlives the service.
struct State {
    /// By number, which is by age.
    std::map<std::int64_t, Copy> copies;
    /// Team and identifier of each extension that the user has approved.
    std::set<std::pair<std::string, std::string>> approvals;
    /// By number, in the order in which they were ordered.
    std::map<std::int64_t, Fault> faults;
    /// What is known of every extension that ever had a copy, by identifier.
    std::map<std::string, Extension> seen;
    /// Every bundle that an application has asked from.
    std::set<std::string> applications;
    Settings settings;
    /// The simulated clock, in milliseconds.
    std::int64_t clock = 0;
    /// The last number given to a copy, a request or a fault.
    std::int64_t lastNumber = 0;

    friend bool operator==(const State&, const State&) = default;
};

} // namespace simulator
