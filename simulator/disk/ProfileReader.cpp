#include "simulator/disk/ProfileReader.h"

#include "simulator/disk/PropertyList.h"

#include <array>

namespace simulator {

namespace {

constexpr std::array keys{"AllowedSystemExtensions", "AllowedTeamIdentifiers", "AllowUserOverrides",
                          "RemovableSystemExtensions"};

bool hasAnyKey(const PropertyList& payload) {
    for (const auto* const key : keys) {
        if (payload.dictionary().count(key) != 0) return true;
    }
    return false;
}

void addLists(Profile::IdentifiersOfTeam& lists, const PropertyList& ofTeams) {
    for (const auto& [team, identifiers] : ofTeams.dictionary()) {
        for (const std::string& identifier : identifiers.texts())
            lists[team].insert(identifier);
    }
}

void addPayload(Profile& profile, const PropertyList& payload) {
    addLists(profile.allowedExtensions, payload["AllowedSystemExtensions"]);
    addLists(profile.removableExtensions, payload["RemovableSystemExtensions"]);
    for (const std::string& team : payload["AllowedTeamIdentifiers"].texts())
        profile.allowedTeams.insert(team);
    if (payload.dictionary().count("AllowUserOverrides") != 0) {
        profile.allowsUserOverrides = profile.allowsUserOverrides && payload["AllowUserOverrides"].isTrue();
    }
}

} // namespace

std::optional<Profile> readProfile(const std::string& bytes) {
    if (bytes.empty()) return Profile{};
    const auto list = PropertyList::parse(bytes);
    if (!list) return std::nullopt;
    PropertyList::Array payloads = (*list)["PayloadContent"].array();
    payloads.push_back(*list);
    Profile profile;
    profile.source = bytes;
    bool isAboutExtensions = false;
    for (const PropertyList& payload : payloads) {
        isAboutExtensions = isAboutExtensions || hasAnyKey(payload);
        addPayload(profile, payload);
    }
    return isAboutExtensions ? std::optional{profile} : std::nullopt;
}

} // namespace simulator
