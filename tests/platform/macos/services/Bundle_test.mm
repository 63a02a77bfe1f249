#include "platform/Bundle.h"

#include "platform/macos/BundleReader.h"
#include "tests/platform/macos/services/ServicesTest.h"

#include <filesystem>
#include <fstream>

namespace platform {
namespace {

/// A bundle on disk, as GNUstep has them: the list lies beside the images.
class ABundle : public testing::Test {
protected:
    ABundle() : folder_{std::filesystem::temp_directory_path() / ("bundle-" + std::to_string(getpid()) + ".app")} {
        std::filesystem::create_directories(folder_ / "Resources");
    }
    ~ABundle() override { std::filesystem::remove_all(folder_); }

    NSBundle read(const std::string& list) const {
        if (!list.empty()) std::ofstream{folder_ / "Resources/Info-gnustep.plist"} << list;
        @autoreleasepool {
            NSString* const path = [NSString stringWithUTF8String:folder_.c_str()];
            return readBundle([[[::NSBundle alloc] initWithPath:path] autorelease]);
        }
    }
    static std::string listOf(const std::string& content) {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
               "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\"><plist version=\"1.0\"><dict>" +
               content + "</dict></plist>";
    }
    std::string path() const { return folder_; }

private:
    std::filesystem::path folder_;
};

TEST_F(ABundle, KeepsATextAText) {
    const NSBundle bundle = read(listOf("<key>CFBundleVersion</key><string>2105</string>"));
    ASSERT_TRUE(bundle.infoDictionary());
    EXPECT_EQ(std::get<std::string>(bundle.infoDictionary()->at("CFBundleVersion")), "2105");
}

TEST_F(ABundle, TellsANumberFromAText) {
    const NSBundle bundle = read(
        listOf("<key>CFBundleVersion</key><integer>2105</integer><key>A</key><real>1.5</real><key>B</key><true/>"));
    ASSERT_TRUE(bundle.infoDictionary());
    for (const char* key : {"CFBundleVersion", "A", "B"})
        EXPECT_TRUE(std::holds_alternative<NumberObject>(bundle.infoDictionary()->at(key))) << key;
}

TEST_F(ABundle, KnowsThatAnythingElseIsNeither) {
    const NSBundle bundle = read(listOf("<key>A</key><array/><key>B</key><dict/><key>C</key><data/>"));
    ASSERT_TRUE(bundle.infoDictionary());
    for (const char* key : {"A", "B", "C"})
        EXPECT_TRUE(std::holds_alternative<OtherObject>(bundle.infoDictionary()->at(key))) << key;
}

TEST_F(ABundle, HasNoDictionaryWhereThereIsNoneAndSaysSo) {
    const NSBundle bundle = read("");
    EXPECT_FALSE(bundle.infoDictionary());
    EXPECT_EQ(bundle.infoFile(), path() + "/Contents/Info.plist");
    EXPECT_EQ(bundle.infoProblem(), "it is missing, or no property list");
}

TEST_F(ABundle, HasItsImagesWhereTheSystemSays) {
    EXPECT_EQ(read(listOf("")).resourcePath(), path() + "/Resources");
}

TEST(TheMainBundle, IsTheSameOneAlways) {
    EXPECT_EQ(&NSBundle::mainBundle(), &NSBundle::mainBundle());
}

} // namespace
} // namespace platform
