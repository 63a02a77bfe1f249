#include "platform/linux/BundleReader.h"
#include "simulator/disk/PropertyList.h"

#include <filesystem>
#include <set>
#include <string>

// The bundle in the build tree.

namespace platform {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::SizeIs;

const fs::path bundle = BUNDLE;
const fs::path extensions = bundle / "Contents" / "Library" / "SystemExtensions";

std::string textIn(const NSBundle& read, const std::string& key) {
    const auto* const dictionary = read.infoDictionary();
    if (dictionary == nullptr) return read.infoProblem();
    const auto found = dictionary->find(key);
    return found == dictionary->end() ? "missing" : found->second.value_or("no text");
}

std::set<std::string> namesIn(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator{folder})
        names.insert(entry.path().filename());
    return names;
}

TEST(TheBundle, SaysWhatItIs) {
    const auto read = readBundle(bundle);
    EXPECT_EQ(textIn(read, "CFBundleIdentifier"), "com.kelvra.driver-manager");
    EXPECT_EQ(textIn(read, "CFBundleShortVersionString"), "2.1");
    EXPECT_EQ(textIn(read, "CFBundleVersion"), BUNDLE_BUILD);
    EXPECT_EQ(textIn(read, "CFBundlePackageType"), "APPL");
    EXPECT_EQ(textIn(read, "CFBundleExecutable"), "Driver Manager");
}

TEST(TheBundle, ContainsItsExecutableAndNoOther) {
    EXPECT_THAT(namesIn(bundle / "Contents" / "MacOS"), ElementsAre("Driver Manager"));
    EXPECT_NE(fs::status(bundle / "Contents" / "MacOS" / "Driver Manager").permissions() & fs::perms::owner_exec,
              fs::perms::none);
}

TEST(TheBundle, ContainsAllDrawingsAndNothingElse) {
    auto drawings = namesIn(ICONS);
    std::erase_if(drawings, [](const std::string& name) { return fs::path{name}.extension() != ".svg"; });
    EXPECT_THAT(drawings, SizeIs(testing::Ge(8U)));
    EXPECT_EQ(namesIn(bundle / "Contents" / "Resources"), drawings);
}

TEST(TheBundle, ContainsTheThreeExtensions) {
    EXPECT_THAT(namesIn(extensions),
                ElementsAre("com.kelvra.driverkit.base.dext", "com.kelvra.driverkit.usb-to-poe.dext",
                            "com.kelvra.ip-camera.cmio.systemextension"));
}

TEST(AnExtensionOfTheBundle, IsNamedAfterItsIdentifierAndOfTheApplicationsBuildAndADriverIsFlat) {
    for (const auto& name : namesIn(extensions)) {
        const bool isDriver = fs::path{name}.extension() == ".dext";
        const auto info =
            simulator::PropertyList::read(extensions / name / (isDriver ? "" : "Contents") / "Info.plist");
        ASSERT_TRUE(info.has_value()) << name;
        EXPECT_EQ((*info)["CFBundleIdentifier"].text(), fs::path{name}.stem());
        EXPECT_EQ((*info)["CFBundleShortVersionString"].text(), "2.1") << name;
        EXPECT_EQ((*info)["CFBundleVersion"].text(), "2105") << name;
        EXPECT_EQ((*info)["CFBundlePackageType"].text(), isDriver ? "DEXT" : "SYSX");
    }
}

} // namespace
} // namespace platform
