#include "simulator/disk/ProfileReader.h"

#include "simulator/disk/PropertyList.h"

#include <algorithm>
#include <array>

namespace simulator {

namespace {

constexpr auto policyType = "com.apple.system-extension-policy";

template <typename Value>
bool isA(const PropertyList& value) {
    return value.is<Value>();
}

template <typename Element>
bool isArrayOf(const PropertyList& value) {
    const PropertyList::Array& elements = value.array();
    return isA<PropertyList::Array>(value) && std::all_of(elements.begin(), elements.end(), isA<Element>);
}

bool isTextsOfTeams(const PropertyList& value) {
    const auto isSound = [](const auto& entry) { return isArrayOf<std::string>(entry.second); };
    const PropertyList::Dictionary& teams = value.dictionary();
    return isA<PropertyList::Dictionary>(value) && std::all_of(teams.begin(), teams.end(), isSound);
}

struct Key {
    const char* name;
    bool (*isSound)(const PropertyList& value);
    const char* shape;
};

constexpr auto textsOfTeams = "a dictionary with an array of texts for each team";
constexpr Key payloadContent{"PayloadContent", isArrayOf<PropertyList::Dictionary>, "an array of dictionaries"};
constexpr Key payloadType{"PayloadType", isA<std::string>, "a text"};
constexpr std::array rules{Key{"AllowedSystemExtensions", isTextsOfTeams, textsOfTeams},
                           Key{"AllowedTeamIdentifiers", isArrayOf<std::string>, "an array of texts"},
                           Key{"AllowUserOverrides", isA<bool>, "true or false"},
                           Key{"RemovableSystemExtensions", isTextsOfTeams, textsOfTeams}};

bool has(const PropertyList& payload, const Key& key) {
    return payload.dictionary().count(key.name) != 0;
}

/// A payload that does not say what it is about is what its keys are about.
bool isPolicy(const PropertyList& payload) {
    if (has(payload, payloadType)) return payload[payloadType.name].text() == policyType;
    return std::any_of(rules.begin(), rules.end(), [&](const Key& rule) { return has(payload, rule); });
}

Refusal refusal(const std::string& problem) {
    return {Refusal::Kind::invalidArgument, "the profile " + problem};
}

/// Throws a refusal where the key's value is of the wrong type.
void check(const PropertyList& payload, const Key& key) {
    if (!has(payload, key) || key.isSound(payload[key.name])) return;
    throw refusal(std::string{"is malformed: "} + key.name + " has to be " + key.shape);
}

void add(Profile::IdentifiersOfTeam& lists, const PropertyList& ofTeams) {
    for (const auto& [team, identifiers] : ofTeams.dictionary()) {
        for (const std::string& identifier : identifiers.texts())
            lists[team].insert(identifier);
    }
}

void addPolicy(Profile& profile, const PropertyList& payload) {
    for (const Key& rule : rules)
        check(payload, rule);
    add(profile.allowedExtensions, payload["AllowedSystemExtensions"]);
    add(profile.removableExtensions, payload["RemovableSystemExtensions"]);
    for (const std::string& team : payload["AllowedTeamIdentifiers"].texts())
        profile.allowedTeams.insert(team);
    const PropertyList& overrides = payload["AllowUserOverrides"];
    if (isA<bool>(overrides) && !overrides.isTrue()) profile.allowsUserOverrides = false;
}

Profile profileIn(const PropertyList& list) {
    check(list, payloadContent);
    PropertyList::Array payloads = list[payloadContent.name].array();
    payloads.push_back(list); // the keys may lie in it, too
    Profile profile;
    bool isAny = false;
    for (const PropertyList& payload : payloads) {
        check(payload, payloadType);
        if (!isPolicy(payload)) continue;
        addPolicy(profile, payload);
        isAny = true;
    }
    if (!isAny) throw refusal("holds no system extension policy");
    return profile;
}

} // namespace

std::variant<Profile, Refusal> readProfile(const std::string& bytes) {
    if (bytes.empty()) return Profile{};
    const auto list = PropertyList::parse(bytes);
    if (!list) return refusal("is no property list");
    try {
        Profile profile = profileIn(*list);
        profile.source = bytes;
        return profile;
    } catch (const Refusal& problem) {
        return problem;
    }
}

} // namespace simulator
