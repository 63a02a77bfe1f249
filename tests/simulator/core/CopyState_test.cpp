#include "simulator/core/Copies.h"

#include <set>
#include <string>

namespace simulator {
namespace {

/// "STATE: isEnabled isAwaitingUserApproval isUninstalling, STARS" of a copy in that state.
std::string shown(CopyState state) {
    const CopyStateRow& row = describe(state);
    Copy copy;
    copy.state = state;
    const CopyRecord record = recordOf(copy);
    std::string flags;
    for (const bool flag : {record.isEnabled, record.isAwaitingUserApproval, record.isUninstalling})
        flags += flag ? " yes" : " no";
    const std::string stars = std::string{row.enabledStar ? "*" : "-"} + (row.activeStar ? "*" : "-");
    return std::string{row.text} + ":" + (row.reported ? flags : " not told") + ", " + stars;
}

TEST(AState, IsToldAndListedAsOnARealMac) {
    EXPECT_EQ(shown(CopyState::validating), "validating: not told, --");
    EXPECT_EQ(shown(CopyState::staging), "staging: not told, --");
    EXPECT_EQ(shown(CopyState::waitingForUser), "activated waiting for user: no yes no, -*");
    EXPECT_EQ(shown(CopyState::enabled), "activated enabled: yes no no, **");
    EXPECT_EQ(shown(CopyState::disabled), "activated disabled: no no no, --");
    EXPECT_EQ(shown(CopyState::terminatingForUpgrade), "terminating for upgrade via delegate: no no yes, **");
    EXPECT_EQ(shown(CopyState::terminatingForUninstall), "terminating for uninstall: no no yes, **");
    EXPECT_EQ(shown(CopyState::terminated), "terminated waiting to uninstall on reboot: no no yes, --");
}

TEST(TheCategories, StandInTheAlphabeticalOrderOfTheirNames) {
    EXPECT_EQ(nameOf(Category::camera), "com.apple.system_extension.cmio");
    EXPECT_EQ(nameOf(Category::driver), "com.apple.system_extension.driver_extension");
    EXPECT_EQ(nameOf(Category::endpointSecurity), "com.apple.system_extension.endpoint_security");
    EXPECT_EQ(nameOf(Category::network), "com.apple.system_extension.network_extension");
    std::set<std::string_view> names;
    for (const CategoryRow& row : categories) {
        EXPECT_TRUE(names.empty() || *names.rbegin() < row.name);
        EXPECT_EQ(categoryNamed(row.name), row.category);
        names.insert(row.name);
    }
}

} // namespace
} // namespace simulator
