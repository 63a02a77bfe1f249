#include "simulator/core/Profile.h"

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

} // namespace simulator
