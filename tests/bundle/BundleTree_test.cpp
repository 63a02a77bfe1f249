#include "platform/linux/BundleReader.h"

#include <filesystem>
#include <set>
#include <string>

// The bundle as the build leaves it.

namespace platform {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

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

std::set<std::string> drawingsIn(const fs::path& folder) {
    auto names = namesIn(folder);
    std::erase_if(names, [](const std::string& name) { return fs::path{name}.extension() != ".svg"; });
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

TEST(TheBundle, HoldsItsExecutableAndNothingBesideIt) {
    EXPECT_THAT(namesIn(bundle / "Contents" / "MacOS"), ElementsAre("Driver Manager"));
    EXPECT_NE(fs::status(bundle / "Contents" / "MacOS" / "Driver Manager").permissions() & fs::perms::owner_exec,
              fs::perms::none);
}

TEST(TheBundle, HoldsEveryImage) {
    const auto images = namesIn(bundle / "Contents" / "Resources");
    EXPECT_EQ(images, drawingsIn(ICONS));
    EXPECT_THAT(images, IsSupersetOf({"Ethernet.svg", "EthernetDark.svg", "VideoCamera.svg", "VideoCameraDark.svg",
                                      "checkmark.circle.fill.svg", "exclamationmark.circle.fill.svg",
                                      "arrow.clockwise.circle.svg", "trash.svg"}));
}

TEST(TheBundle, HoldsTheThreeExtensions) {
    EXPECT_THAT(namesIn(extensions),
                ElementsAre("com.kelvra.driverkit.base.dext", "com.kelvra.driverkit.usb-to-poe.dext",
                            "com.kelvra.ip-camera.cmio.systemextension"));
}

TEST(AnExtensionOfTheBundle, IsNamedAfterItsIdentifier) {
    for (const auto& name : namesIn(extensions))
        EXPECT_EQ(textIn(readBundle(extensions / name), "CFBundleIdentifier"), fs::path{name}.stem());
}

TEST(AnExtensionOfTheBundle, IsOfTheBuildThatTheApplicationStandsFor) {
    for (const auto& name : namesIn(extensions)) {
        EXPECT_EQ(textIn(readBundle(extensions / name), "CFBundleShortVersionString"), "2.1") << name;
        EXPECT_EQ(textIn(readBundle(extensions / name), "CFBundleVersion"), "2105") << name;
    }
}

TEST(AnExtensionOfTheBundle, SaysWhatItIsFor) {
    for (const auto& name : namesIn(extensions)) {
        const bool isDriver = fs::path{name}.extension() == ".dext";
        const auto read = readBundle(extensions / name);
        const auto* const key = isDriver ? "OSBundleUsageDescription" : "NSSystemExtensionUsageDescription";
        EXPECT_THAT(textIn(read, key), Not(testing::AnyOf(IsEmpty(), "missing", "no text"))) << name;
        EXPECT_EQ(textIn(read, "CFBundlePackageType"), isDriver ? "DEXT" : "SYSX");
    }
}

} // namespace
} // namespace platform
