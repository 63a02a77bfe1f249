#include "simulator/disk/ProfileReader.h"

#include "simulator/disk/PropertyList.h"

namespace simulator {
namespace {

using List = PropertyList::Dictionary;
using Array = PropertyList::Array;

Profile profileOf(const List& list) {
    return readProfile(PropertyList{list}.toXml()).value();
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
    EXPECT_EQ(readProfile(bytes)->source, bytes);
}

TEST(AProfile, IsEmptyForNoBytes) {
    EXPECT_EQ(readProfile(""), Profile{});
}

TEST(AProfile, IsNoneForWhatIsNoPropertyListOrAboutSomethingElse) {
    EXPECT_EQ(readProfile("nonsense"), std::nullopt);
    EXPECT_EQ(readProfile(PropertyList{List{{"WiFi", true}}}.toXml()), std::nullopt);
    EXPECT_EQ(readProfile(PropertyList{"text"}.toXml()), std::nullopt);
}

} // namespace
} // namespace simulator
