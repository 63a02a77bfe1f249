#include "platform/Bundle.h"

#include "tests/platform/macos/services/BundleOnDisk.h"

namespace platform {
namespace {

using ABundle = BundleOnDisk;

TEST_F(ABundle, KeepsATextAText) {
    const NSBundle bundle = read(listOf("<key>CFBundleVersion</key><string>2105</string>"));
    ASSERT_TRUE(bundle.infoDictionary());
    EXPECT_EQ(bundle.infoDictionary()->at("CFBundleVersion"), "2105");
}

TEST_F(ABundle, TakesNothingElseForAText) {
    const NSBundle bundle =
        read(listOf("<key>CFBundleVersion</key><integer>2105</integer><key>A</key><real>1.5</real>"
                    "<key>B</key><true/><key>C</key><array/><key>D</key><dict/><key>E</key><data/>"));
    ASSERT_TRUE(bundle.infoDictionary());
    for (const char* key : {"CFBundleVersion", "A", "B", "C", "D", "E"})
        EXPECT_EQ(bundle.infoDictionary()->at(key), std::nullopt) << key;
}

TEST_F(ABundle, HasItsImagesWhereTheSystemSays) {
    EXPECT_EQ(read(listOf("")).resourcePath(), path() + "/" BUNDLE_RESOURCES);
}

TEST(TheMainBundle, IsTheSameOneAlways) {
    EXPECT_EQ(&NSBundle::mainBundle(), &NSBundle::mainBundle());
}

} // namespace
} // namespace platform
