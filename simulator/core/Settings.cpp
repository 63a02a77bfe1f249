#include "simulator/core/Settings.h"

#include <cstddef>

namespace simulator {

namespace {

bool contains(const Profile::IdentifiersOfTeam& lists, const std::string& team, const std::string& identifier) {
    const auto list = lists.find(team);
    return list != lists.end() && list->second.count(identifier) != 0;
}

} // namespace

bool Profile::allows(const std::string& team, const std::string& identifier) const {
    return allowedTeams.count(team) != 0 || contains(allowedExtensions, team, identifier);
}

bool Profile::letsRemove(const std::string& team, const std::string& identifier) const {
    return contains(removableExtensions, team, identifier);
}

bool Profile::forbids(const std::string& team, const std::string& identifier) const {
    return !allowsUserOverrides && !allows(team, identifier);
}

const SwitchRow& describe(Switch which) {
    return switches[static_cast<std::size_t>(which)];
}

std::optional<Switch> switchNamed(std::string_view name) {
    for (const SwitchRow& row : switches) {
        if (row.name == name) return row.which;
    }
    return std::nullopt;
}

std::string_view Settings::valueOf(Switch which) const {
    const auto found = switches.find(which);
    return found == switches.end() ? describe(which).byDefault : std::string_view{found->second};
}

void Settings::set(Switch which, std::string_view value) {
    if (value == describe(which).byDefault) {
        switches.erase(which);
    } else {
        switches[which] = value;
    }
}

} // namespace simulator
