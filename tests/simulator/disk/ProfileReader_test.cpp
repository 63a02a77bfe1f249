#include "simulator/disk/RealDisk.h"

#include "simulator/disk/PropertyList.h"

#include <array>

namespace simulator {
namespace {

using List = PropertyList::Dictionary;
using Array = PropertyList::Array;

constexpr auto policyType = "com.apple.system-extension-policy";

Profile profileOf(const List& list) {
    return std::get<Profile>(readProfile(PropertyList{list}.toXml()));
}

/// Why these bytes are refused.
std::string refusalOf(const std::string& bytes) {
    const auto read = readProfile(bytes);
    const auto* const refusal = std::get_if<Refusal>(&read);
    if (!refusal) return "they are taken";
    EXPECT_EQ(refusal->kind, Refusal::Kind::invalidArgument);
    return refusal->message;
}

std::string refusalOf(const List& list) {
    return refusalOf(PropertyList{list}.toXml());
}

List payloadOf(const char* type, List keys) {
    keys["PayloadType"] = type;
    return keys;
}

List aboutSomethingElse(const PropertyList& overrides) {
    return payloadOf("com.apple.security.firewall", {{"AllowUserOverrides", overrides}});
}

List configurationOf(const Array& payloads) {
    return payloadOf("Configuration", {{"PayloadContent", payloads}});
}

TEST(AProfile, ListsExtensionsAndTeams) {
    const Profile profile = profileOf({{"AllowedSystemExtensions", List{{"TEAM", Array{"a", "b"}}}},
                                       {"AllowedTeamIdentifiers", Array{"OTHER"}},
                                       {"RemovableSystemExtensions", List{{"TEAM", Array{"b"}}}}});
    EXPECT_TRUE(profile.allows("TEAM", "a"));
    EXPECT_FALSE(profile.allows("TEAM", "c"));
    EXPECT_TRUE(profile.allows("OTHER", "c"));
    EXPECT_TRUE(profile.letsRemove("TEAM", "b"));
    EXPECT_FALSE(profile.letsRemove("TEAM", "a"));
    EXPECT_FALSE(profile.forbids("TEAM", "c"));
}

TEST(AProfile, MayLeaveNothingToTheUser) {
    const Profile profile = profileOf({{"AllowUserOverrides", false}, {"AllowedTeamIdentifiers", Array{"TEAM"}}});
    EXPECT_TRUE(profile.forbids("OTHER", "a"));
    EXPECT_FALSE(profile.forbids("TEAM", "a"));
}

TEST(AProfile, KeepsTheBytesThatItWasReadFrom) {
    const std::string bytes = PropertyList{List{{"AllowUserOverrides", false}}}.toXml();
    EXPECT_EQ(std::get<Profile>(readProfile(bytes)).source, bytes);
    EXPECT_EQ(std::get<Profile>(readProfile("")), Profile{});
}

TEST(AProfile, IsNoneForWhatHoldsNoPolicy) {
    EXPECT_EQ(refusalOf("nonsense"), "the profile is no property list");
    constexpr auto problem = "the profile holds no system extension policy";
    EXPECT_EQ(refusalOf(List{{"WiFi", true}}), problem);
    EXPECT_EQ(refusalOf(PropertyList{"text"}.toXml()), problem);
    EXPECT_EQ(refusalOf(configurationOf({aboutSomethingElse(false)})), problem);
}

TEST(AProfile, MayLieInThePayloadsOfAConfigurationProfileBesideOthers) {
    const List policy = {{"AllowedTeamIdentifiers", Array{"TEAM"}}};
    for (const auto& payload : {policy, payloadOf(policyType, policy)}) {
        const Profile profile = profileOf(configurationOf({aboutSomethingElse(false), payload}));
        EXPECT_TRUE(profile.allows("TEAM", "a"));
        EXPECT_FALSE(profile.forbids("OTHER", "a"));
    }
}

TEST(AProfile, IsTakenWithAPayloadAboutSomethingElseWhoseKeysMeanSomethingElse) {
    const Profile profile = profileOf(configurationOf({aboutSomethingElse("never"), payloadOf(policyType, {})}));
    EXPECT_FALSE(profile.forbids("TEAM", "a"));
}

/// A key, a value of the wrong type, and what it has to be.
struct Malformed {
    const char* key;
    const char* value;
    const char* shape;
};

constexpr auto textsOfTeams = "a dictionary with an array of texts for each team";
constexpr std::array everyMalformed{
    Malformed{"AllowUserOverrides", "<string>true</string>", "true or false"},
    Malformed{"AllowUserOverrides", "<integer>1</integer>", "true or false"},
    Malformed{"AllowUserOverrides", "<array><true/></array>", "true or false"},
    Malformed{"AllowedTeamIdentifiers", "<string>TEAM</string>", "an array of texts"},
    Malformed{"AllowedTeamIdentifiers", "<integer>1</integer>", "an array of texts"},
    Malformed{"AllowedTeamIdentifiers", "<array><string>TEAM</string><true/></array>", "an array of texts"},
    Malformed{"AllowedTeamIdentifiers", "<array><integer>1</integer></array>", "an array of texts"},
    Malformed{"AllowedSystemExtensions", "<array><string>a</string></array>", textsOfTeams},
    Malformed{"AllowedSystemExtensions", "<dict><key>TEAM</key><string>a</string></dict>", textsOfTeams},
    Malformed{"RemovableSystemExtensions", "<array><string>a</string></array>", textsOfTeams},
    Malformed{"RemovableSystemExtensions", "<dict><key>T</key><array><dict/></array></dict>", textsOfTeams},
    Malformed{"PayloadContent", "<dict><key>AllowUserOverrides</key><false/></dict>", "an array of dictionaries"},
    Malformed{"PayloadContent", "<array><string>a</string></array>", "an array of dictionaries"},
    Malformed{"PayloadType", "<true/>", "a text"},
};

TEST(AMalformedProfile, IsRefusedWithTheKeyAndWhatItHasToBe) {
    for (const auto& [key, value, shape] : everyMalformed) {
        const std::string entry = std::string{"<key>"} + key + "</key>" + value;
        EXPECT_EQ(refusalOf("<plist><dict>" + entry + "</dict></plist>"),
                  std::string{"the profile is malformed: "} + key + " has to be " + shape)
            << value;
    }
}

TEST(AMalformedProfile, IsRefusedForAWrongKeyInAPayload) {
    EXPECT_EQ(refusalOf(configurationOf({payloadOf(policyType, {{"AllowUserOverrides", "false"}})})),
              "the profile is malformed: AllowUserOverrides has to be true or false");
}

} // namespace
} // namespace simulator
