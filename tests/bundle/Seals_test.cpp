#include "simulator/core/Checks.h"
#include "simulator/disk/RealDisk.h"
#include "simulator/disk/Seal.h"

#include <filesystem>

// The bundle as the simulator sees it.

namespace {

class ASealedBundle : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(read.has_value()); }

    const std::filesystem::path path = BUNDLE;
    const std::optional<simulator::BundleOnDisk> read = simulator::RealDisk{}.read(BUNDLE);
};

TEST_F(ASealedBundle, IsSealedAfterEverythingInIt) {
    const auto seal = simulator::readSeal(BUNDLE);
    ASSERT_TRUE(seal.has_value());
    EXPECT_EQ(seal->files, simulator::digestsOf(BUNDLE));
}

TEST_F(ASealedBundle, PassesTheChecksOfAnActivationOfEachOfItsExtensions) {
    simulator::Settings settings;
    settings.applicationsFolders = {path.parent_path()};
    for (const auto& extension : read->extensions) {
        auto subject = simulator::subjectOf(read, extension.identifier, settings);
        subject.sealMatches = simulator::isAsSealed(path / "Contents/Library/SystemExtensions" / extension.fileName);
        EXPECT_FALSE(simulator::firstFailedLookup(subject)) << extension.identifier;
        EXPECT_FALSE(simulator::firstFailedValidation(subject)) << extension.identifier;
    }
    EXPECT_EQ(read->team, "KELVRA0001");
}

} // namespace
