#include "model/InstallStatus.h"

#include <functional>
#include <unordered_set>

namespace model {
namespace {

TEST(TheInstallStatus, HasThreeCasesInOrder) {
    EXPECT_EQ(static_cast<int>(InstallStatus::allEnabled), 0);
    EXPECT_EQ(static_cast<int>(InstallStatus::awaitingAllow), 1);
    EXPECT_EQ(static_cast<int>(InstallStatus::nothingInstalled), 2);
}

TEST(TheInstallStatus, ComparesAndHashesByCase) {
    const std::unordered_set<InstallStatus> different{InstallStatus::allEnabled, InstallStatus::awaitingAllow,
                                                      InstallStatus::nothingInstalled, InstallStatus::allEnabled};
    EXPECT_EQ(different.size(), 3U);
    EXPECT_TRUE(different.contains(InstallStatus::awaitingAllow));
}

} // namespace
} // namespace model
