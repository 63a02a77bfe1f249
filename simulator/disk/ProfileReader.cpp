#include "simulator/disk/ProfileReader.h"

#include "simulator/disk/PropertyList.h"

#include <algorithm>
#include <array>
#include <functional>

namespace simulator {

namespace {

constexpr auto policyType = "com.apple.system-extension-policy";

bool isText(const PropertyList& value) {
    return value.isText();
}

bool isTruth(const PropertyList& value) {
    return value.isTruth();
}

template <typename IsElement>
bool isArrayOf(const PropertyList& value, const IsElement& isElement) {
    return value.isArray() && std::all_of(value.array().begin(), value.array().end(), isElement);
}

bool isTexts(const PropertyList& value) {
    return isArrayOf(value, isText);
}

bool isDictionaries(const PropertyList& value) {
    return isArrayOf(value, [](const PropertyList& element) { return element.isDictionary(); });
}

bool isTextsOfTeams(const PropertyList& value) {
    const auto& teams = value.dictionary();
    return value.isDictionary() &&
           std::all_of(teams.begin(), teams.end(), [](const auto& entry) { return isTexts(entry.second); });
}

struct Key {
    const char* name;
    bool (*isSound)(const PropertyList& value);
    const char* shape;
};

constexpr auto textsOfTeams = "a dictionary with an array of texts for each team";
constexpr Key payloadContent{"PayloadContent", isDictionaries, "an array of dictionaries"};
constexpr Key payloadType{"PayloadType", isText, "a text"};
constexpr std::array rules{Key{"AllowedSystemExtensions", isTextsOfTeams, textsOfTeams},
                           Key{"AllowedTeamIdentifiers", isTexts, "an array of texts"},
                           Key{"AllowUserOverrides", isTruth, "true or false"},
                           Key{"RemovableSystemExtensions", isTextsOfTeams, textsOfTeams}};

bool has(const PropertyList& payload, const Key& key) {
    return payload.dictionary().count(key.name) != 0;
}

bool isMalformed(const PropertyList& payload, const Key& key) {
    return has(payload, key) && !key.isSound(payload[key.name]);
}

/// A payload that does not say what it is about is what its keys are about.
bool isPolicy(const PropertyList& payload) {
    if (has(payload, payloadType)) return payload[payloadType.name].text() == policyType;
    return std::any_of(rules.begin(), rules.end(), [&](const Key& rule) { return has(payload, rule); });
}

/// Itself too, for the keys may lie in it.
PropertyList::Array payloadsOf(const PropertyList& list) {
    PropertyList::Array payloads = list[payloadContent.name].array();
    payloads.push_back(list);
    return payloads;
}

/// The first one, if any, of a payload that may be about something else.
const Key* malformedKeyOf(const PropertyList& payload) {
    if (isMalformed(payload, payloadType)) return &payloadType;
    if (!isPolicy(payload)) return nullptr;
    const auto* const found =
        std::find_if(rules.begin(), rules.end(), [&](const Key& rule) { return isMalformed(payload, rule); });
    return found == rules.end() ? nullptr : found;
}

const Key* malformedKeyIn(const PropertyList& list) {
    if (isMalformed(list, payloadContent)) return &payloadContent;
    for (const PropertyList& payload : payloadsOf(list)) {
        if (const Key* const key = malformedKeyOf(payload)) return key;
    }
    return nullptr;
}

void addLists(Profile::IdentifiersOfTeam& lists, const PropertyList& ofTeams) {
    for (const auto& [team, identifiers] : ofTeams.dictionary()) {
        for (const std::string& identifier : identifiers.texts())
            lists[team].insert(identifier);
    }
}

void addPolicy(Profile& profile, const PropertyList& payload) {
    addLists(profile.allowedExtensions, payload["AllowedSystemExtensions"]);
    addLists(profile.removableExtensions, payload["RemovableSystemExtensions"]);
    for (const std::string& team : payload["AllowedTeamIdentifiers"].texts())
        profile.allowedTeams.insert(team);
    if (payload["AllowUserOverrides"].isTruth() && !payload["AllowUserOverrides"].isTrue()) {
        profile.allowsUserOverrides = false;
    }
}

Refusal refusal(const std::string& problem) {
    return {Refusal::Kind::invalidArgument, "the profile " + problem};
}

} // namespace

std::variant<Profile, Refusal> readProfile(const std::string& bytes) {
    if (bytes.empty()) return Profile{};
    const auto list = PropertyList::parse(bytes);
    if (!list) return refusal("is no property list");
    if (const Key* const key = malformedKeyIn(*list)) {
        return refusal(std::string{"is malformed: "} + key->name + " has to be " + key->shape);
    }
    PropertyList::Array policies = payloadsOf(*list);
    policies.erase(std::remove_if(policies.begin(), policies.end(), std::not_fn(isPolicy)), policies.end());
    if (policies.empty()) return refusal("holds no system extension policy");
    Profile profile;
    profile.source = bytes;
    for (const PropertyList& policy : policies)
        addPolicy(profile, policy);
    return profile;
}

} // namespace simulator
