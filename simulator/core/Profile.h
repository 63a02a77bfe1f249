#pragma once

#include <map>
#include <set>
#include <string>

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

} // namespace simulator
