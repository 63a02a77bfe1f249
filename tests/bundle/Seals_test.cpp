#include "simulator/disk/RealDisk.h"
#include "simulator/disk/Seal.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <set>
#include <string>

// The bundle as the simulator sees it.

namespace {

using simulator::Category;
using testing::Each;
using testing::Field;
using testing::UnorderedElementsAre;

class ASealedBundle : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(read.has_value()); }

    const std::optional<simulator::BundleOnDisk> read = simulator::RealDisk{}.read(BUNDLE);
};

TEST_F(ASealedBundle, MayInstallExtensions) {
    EXPECT_EQ(read->identifier, "com.kelvra.driver-manager");
    EXPECT_EQ(read->team, "KELVRA0001");
    EXPECT_TRUE(read->mayInstallExtensions);
}

TEST_F(ASealedBundle, IsSealedAfterEverythingInIt) {
    const auto seal = simulator::readSeal(BUNDLE);
    ASSERT_TRUE(seal.has_value());
    EXPECT_EQ(seal->files, simulator::digestsOf(BUNDLE));
}

TEST_F(ASealedBundle, CarriesExtensionsOfItsTeamAsTheyWereSealed) {
    EXPECT_EQ(read->extensions.size(), 3U);
    EXPECT_THAT(read->extensions, Each(Field(&simulator::ExtensionOnDisk::team, "KELVRA0001")));
    for (const auto& extension : std::filesystem::directory_iterator{BUNDLE "/Contents/Library/SystemExtensions"})
        EXPECT_TRUE(simulator::isAsSealed(extension.path())) << extension.path();
    EXPECT_THAT(read->extensions, Each(Field(&simulator::ExtensionOnDisk::hasUsageDescription, true)));
}

TEST_F(ASealedBundle, CarriesTwoDriversAndACamera) {
    std::multiset<std::optional<Category>> categories;
    std::transform(read->extensions.begin(), read->extensions.end(), std::inserter(categories, categories.end()),
                   [](const auto& extension) { return extension.category; });
    EXPECT_THAT(categories, UnorderedElementsAre(Category::driver, Category::driver, Category::camera));
}

TEST_F(ASealedBundle, CarriesACameraWhoseServiceIsInItsGroup) {
    const auto camera = std::find_if(read->extensions.begin(), read->extensions.end(),
                                     [](const auto& extension) { return extension.category == Category::camera; });
    ASSERT_NE(camera, read->extensions.end());
    ASSERT_EQ(camera->applicationGroups.size(), 1U);
    EXPECT_THAT(camera->machServiceName, testing::StartsWith(*camera->applicationGroups.begin() + "."));
}

} // namespace
