#include "simulator/disk/ProfileReader.h"

#include "simulator/disk/PropertyList.h"

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

List payload(const char* type, List keys) {
    keys["PayloadType"] = type;
    return keys;
}

List configurationOf(const Array& payloads) {
    return {{"PayloadType", "Configuration"}, {"PayloadContent", payloads}};
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

TEST(AProfile, MayLieInThePayloadsOfAConfigurationProfile) {
    const Profile profile = profileOf(
        {{"PayloadType", "Configuration"}, {"PayloadContent", Array{List{{"AllowedTeamIdentifiers", Array{"TEAM"}}}}}});
    EXPECT_TRUE(profile.allows("TEAM", "a"));
}

TEST(AProfile, KeepsTheBytesThatItWasReadFrom) {
    const std::string bytes = PropertyList{List{{"AllowUserOverrides", false}}}.toXml();
    EXPECT_EQ(std::get<Profile>(readProfile(bytes)).source, bytes);
}

TEST(AProfile, IsEmptyForNoBytes) {
    EXPECT_EQ(std::get<Profile>(readProfile("")), Profile{});
}

TEST(AProfile, IsNoneForWhatIsNoPropertyList) {
    EXPECT_EQ(refusalOf("nonsense"), "the profile is no property list");
}

TEST(AProfile, IsNoneForAPropertyListAboutSomethingElse) {
    EXPECT_EQ(refusalOf(List{{"WiFi", true}}), "the profile holds no system extension policy");
    EXPECT_EQ(refusalOf(PropertyList{"text"}.toXml()), "the profile holds no system extension policy");
}

TEST(AProfile, IsNoneForAConfigurationProfileAboutSomethingElse) {
    const List other = payload("com.apple.security.firewall", {{"AllowUserOverrides", false}});
    EXPECT_EQ(refusalOf(configurationOf({other})), "the profile holds no system extension policy");
}

TEST(AProfile, IsNotChangedByAPayloadAboutSomethingElse) {
    const List other = payload("com.apple.security.firewall", {{"AllowUserOverrides", false}});
    const List policy = payload(policyType, {{"AllowedTeamIdentifiers", Array{"TEAM"}}});
    const Profile profile = profileOf(configurationOf({other, policy}));
    EXPECT_TRUE(profile.allows("TEAM", "a"));
    EXPECT_FALSE(profile.forbids("OTHER", "a"));
}

TEST(AProfile, IsTakenWithAPayloadAboutSomethingElseWhoseKeysMeanSomethingElse) {
    const List other = payload("com.apple.security.firewall", {{"AllowUserOverrides", "never"}});
    const List policy = payload(policyType, {{"AllowUserOverrides", true}});
    EXPECT_EQ(refusalOf(configurationOf({other, policy})), "they are taken");
}

TEST(AProfile, MayHoldAPolicyThatSaysNothing) {
    EXPECT_FALSE(profileOf(configurationOf({payload(policyType, {})})).forbids("TEAM", "a"));
}

TEST(AMalformedProfile, IsRefusedForOverridesThatAreNeitherTrueNorFalse) {
    constexpr auto problem = "the profile is malformed: AllowUserOverrides has to be true or false";
    EXPECT_EQ(refusalOf(List{{"AllowUserOverrides", "true"}}), problem);
    EXPECT_EQ(refusalOf(List{{"AllowUserOverrides", Array{true}}}), problem);
    EXPECT_EQ(
        refusalOf(R"(<plist version="1.0"><dict><key>AllowUserOverrides</key><integer>1</integer></dict></plist>)"),
        problem);
}

TEST(AMalformedProfile, IsRefusedForTeamsThatAreNoArrayOfTexts) {
    constexpr auto problem = "the profile is malformed: AllowedTeamIdentifiers has to be an array of texts";
    EXPECT_EQ(refusalOf(List{{"AllowedTeamIdentifiers", "TEAM"}}), problem);
    EXPECT_EQ(refusalOf(List{{"AllowedTeamIdentifiers", Array{"TEAM", true}}}), problem);
    EXPECT_EQ(
        refusalOf(R"(<plist version="1.0"><dict><key>AllowedTeamIdentifiers</key><integer>1</integer></dict></plist>)"),
        problem);
    EXPECT_EQ(
        refusalOf(
            R"(<plist version="1.0"><dict><key>AllowedTeamIdentifiers</key><array><integer>1</integer></array></dict></plist>)"),
        problem);
}

TEST(AMalformedProfile, IsRefusedForExtensionsThatAreNoArraysOfTextsByTeam) {
    for (const std::string key : {"AllowedSystemExtensions", "RemovableSystemExtensions"}) {
        const std::string problem =
            "the profile is malformed: " + key + " has to be a dictionary with an array of texts for each team";
        EXPECT_EQ(refusalOf(List{{key, Array{"a"}}}), problem);
        EXPECT_EQ(refusalOf(List{{key, List{{"TEAM", "a"}}}}), problem);
        EXPECT_EQ(refusalOf(List{{key, List{{"TEAM", Array{List{}}}}}}), problem);
    }
}

TEST(AMalformedProfile, IsRefusedForAWrongKeyInAPayload) {
    const List policy = payload(policyType, {{"AllowUserOverrides", "false"}});
    EXPECT_EQ(refusalOf(configurationOf({policy})),
              "the profile is malformed: AllowUserOverrides has to be true or false");
}

TEST(AMalformedProfile, IsRefusedForPayloadsThatAreNone) {
    constexpr auto problem = "the profile is malformed: PayloadContent has to be an array of dictionaries";
    EXPECT_EQ(refusalOf(List{{"PayloadContent", List{{"AllowUserOverrides", false}}}}), problem);
    EXPECT_EQ(refusalOf(configurationOf({"AllowUserOverrides"})), problem);
}

TEST(AMalformedProfile, IsRefusedForATypeThatIsNoText) {
    EXPECT_EQ(refusalOf(List{{"PayloadType", true}, {"AllowUserOverrides", false}}),
              "the profile is malformed: PayloadType has to be a text");
}

} // namespace
} // namespace simulator
