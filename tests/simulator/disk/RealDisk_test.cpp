#include "simulator/disk/RealDisk.h"
#include "simulator/disk/Seal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QProcess>
#include <QTemporaryDir>

#include <sys/stat.h>

#include <array>
#include <filesystem>
#include <fstream>

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace fs = std::filesystem;
using List = PropertyList::Dictionary;

void write(const fs::path& path, const std::string& contents) {
    fs::create_directories(path.parent_path());
    std::ofstream{path} << contents;
}

void write(const fs::path& path, const List& list) {
    write(path, PropertyList{list}.toXml());
}

int seal(const fs::path& bundle, QStringList arguments, const fs::path& from = "/") {
    QProcess program;
    program.setWorkingDirectory(QString::fromStdString(from));
    program.setStandardErrorFile(QProcess::nullDevice());
    program.start(SEAL, arguments << QString::fromStdString(bundle));
    EXPECT_TRUE(program.waitForFinished());
    return program.exitCode();
}

class ABundleOnDisk : public testing::Test {
protected:
    ABundleOnDisk() {
        write(bundle / "Contents/Info.plist", List{{"CFBundleIdentifier", "com.example.manager"}});
        write(contents / "Info.plist", {{"CFBundleIdentifier", "com.example.camera"},
                                        {"CFBundleShortVersionString", "2.1"},
                                        {"CFBundleVersion", "2105"},
                                        {"CFBundleName", "Camera"},
                                        {"NSSystemExtensionUsageDescription", "To show pictures."},
                                        {"CMIOExtension", List{{"CMIOExtensionMachServiceName", "TEAM.a.camera"}}}});
        write(contents / "MacOS/camera", "code");
    }

    void sealBoth() const {
        ASSERT_EQ(seal(extension, {"--team", "TEAM", "--entitlement", "com.apple.security.application-groups=TEAM.a",
                                   "--entitlement", "com.apple.security.application-groups=TEAM.b"}),
                  0);
        ASSERT_EQ(seal(bundle, {"--team", "TEAM", "--entitlement", "com.apple.developer.system-extension.install"}), 0);
    }

    BundleOnDisk read() const { return disk.read(bundle).value(); }
    ExtensionOnDisk readExtension() const { return read().extensions.at(0); }
    ExtensionOnDisk readExtensionWith(const List& info) const {
        write(contents / "Info.plist", info);
        return readExtension();
    }

    QTemporaryDir temporary;
    fs::path folder = temporary.path().toStdString();
    fs::path bundle = folder / "Manager.app";
    fs::path extensions = bundle / "Contents/Library/SystemExtensions";
    fs::path extension = extensions / "com.example.camera.systemextension";
    fs::path contents = extension / "Contents";
    RealDisk disk;
};

// What is read -------------------------------------------------------------------------------------------------------

TEST_F(ABundleOnDisk, IsReadWithItsExtension) {
    sealBoth();
    const BundleOnDisk found = read();
    EXPECT_EQ(found.path, bundle);
    EXPECT_EQ(found.identifier, "com.example.manager");
    EXPECT_EQ(found.team, "TEAM");
    EXPECT_TRUE(found.mayInstallExtensions);
    ASSERT_THAT(found.extensions, SizeIs(1));
    const ExtensionOnDisk& camera = found.extensions[0];
    EXPECT_EQ(camera.fileName, "com.example.camera.systemextension");
    EXPECT_EQ(camera.identifier, "com.example.camera");
    EXPECT_EQ(textOf(camera.version), "2.1/2105");
    EXPECT_EQ(camera.name, "Camera");
    EXPECT_EQ(camera.category, Category::camera);
    EXPECT_TRUE(camera.hasUsageDescription);
    EXPECT_EQ(camera.machServiceName, "TEAM.a.camera");
    EXPECT_EQ(camera.team, "TEAM");
    EXPECT_THAT(camera.applicationGroups, ElementsAre("TEAM.a", "TEAM.b"));
}

TEST_F(ABundleOnDisk, HasNoTeamAndNoRightsUntilItIsSealed) {
    EXPECT_EQ(read().team, "");
    EXPECT_FALSE(read().mayInstallExtensions);
    EXPECT_EQ(readExtension().team, "");
    EXPECT_FALSE(isAsSealed(extension));
}

TEST_F(ABundleOnDisk, MayHaveAnExtensionWithoutAnInfoPlist) {
    fs::remove(contents / "Info.plist");
    EXPECT_EQ(readExtension().identifier, "");
    EXPECT_EQ(readExtension().category, std::nullopt);
    ASSERT_EQ(mkfifo((contents / "Info.plist").c_str(), 0600), 0);
    EXPECT_EQ(readExtension().identifier, "") << "a pipe is none";
    fs::remove(contents / "Info.plist");
    write(contents / "Info.plist", "nonsense");
    EXPECT_EQ(readExtension().identifier, "");
}

TEST_F(ABundleOnDisk, TellsTheCategoriesApart) {
    EXPECT_EQ(readExtensionWith({}).category, std::nullopt);
    EXPECT_EQ(readExtensionWith({{"NetworkExtension", List{}}}).category, Category::network);
    EXPECT_EQ(readExtensionWith({{"NSEndpointSecurityMachServiceName", "x"}}).category, Category::endpointSecurity);
    fs::rename(extension, extensions / "com.example.camera.dext");
    EXPECT_EQ(readExtension().category, Category::driver);
}

TEST_F(ABundleOnDisk, NamesAnExtensionAsItIsDisplayedOrElseByItsFile) {
    EXPECT_EQ(readExtensionWith({{"CFBundleName", "Camera"}, {"CFBundleDisplayName", "The Camera"}}).name,
              "The Camera");
    EXPECT_EQ(readExtensionWith({{"CFBundleName", "Camera"}}).name, "Camera");
    EXPECT_EQ(readExtensionWith({}).name, "com.example.camera");
}

TEST_F(ABundleOnDisk, ReadsAVersionThatIsANumberAsItsText) {
    write(contents / "Info.plist", R"(<plist><dict><key>CFBundleVersion</key><integer>2105</integer></dict></plist>)");
    EXPECT_EQ(readExtension().version.version, "2105");
}

TEST_F(ABundleOnDisk, IsFoundInItsFolderAndNothingElseIs) {
    fs::create_directories(folder / "Notes");
    write(folder / "File.app", "");
    EXPECT_THAT(disk.bundlesIn(folder), ElementsAre(bundle));
    EXPECT_THAT(disk.bundlesIn("/nowhere"), IsEmpty());
    EXPECT_FALSE(disk.read("/nowhere.app"));
}

TEST_F(ABundleOnDisk, IsFoundFromTheProgramThatRunsInIt) {
    EXPECT_EQ(bundleOfFile(bundle / "Contents/MacOS/Manager"), bundle);
    EXPECT_EQ(bundleOfFile("/usr/bin/true"), "");
}

// Seals --------------------------------------------------------------------------------------------------------------

class ASealedExtension : public ABundleOnDisk {
protected:
    ASealedExtension() {
        fs::create_symlink("MacOS/camera", contents / "toFile");
        fs::create_symlink("MacOS", contents / "toFolder");
        fs::create_symlink("nowhere", contents / "toNothing");
        sealBoth();
    }
};

TEST_F(ASealedExtension, MatchesItsSealWithItsLinksWhereverItIsMoved) {
    EXPECT_TRUE(isAsSealed(extension));
    fs::rename(bundle, folder / "Moved.app");
    EXPECT_TRUE(isAsSealed(folder / "Moved.app" / extension.lexically_relative(bundle)));
}

TEST_F(ASealedExtension, MayBeSealedByARelativePath) {
    ASSERT_EQ(seal(extension.filename(), {"--team", "OTHER"}, extensions), 0);
    EXPECT_EQ(readExtension().team, "OTHER");
    EXPECT_TRUE(isAsSealed(extension));
}

TEST_F(ASealedExtension, IsSealedAnewWhereALinkStandsInThePlaceOfItsSeal) {
    fs::remove(contents / "_SimulatedSignature.plist");
    fs::create_symlink("a file more", contents / "_SimulatedSignature.plist");
    sealBoth();
    EXPECT_TRUE(isAsSealed(extension));
}

TEST_F(ASealedExtension, IsNotSealedWithAPipeOrWithoutATeamOrAnInfoPlist) {
    ASSERT_EQ(mkfifo((contents / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(seal(extension, {"--team", "TEAM"}), 1);
    EXPECT_EQ(seal(extension, {}), 2);
    EXPECT_EQ(seal(folder, {"--team", "TEAM"}), 1);
}

/// What is done to its contents after it was sealed.
struct Change {
    const char* name;
    void (*make)(const fs::path& contents);
};

/// Puts a link in the place of what may be there.
void link(const fs::path& file, const fs::path& target) {
    fs::remove(file);
    fs::create_symlink(target, file);
}

void replaceByPipe(const fs::path& file) {
    fs::remove(file);
    EXPECT_EQ(mkfifo(file.c_str(), 0600), 0);
}

void replaceLinkByItsWords(const fs::path& contents) {
    fs::remove(contents / "toFile");
    write(contents / "toFile", "MacOS/camera");
}

constexpr std::array changes{
    Change{"a file is changed", [](const fs::path& contents) { write(contents / "MacOS/camera", "mode"); }},
    Change{"a file is added", [](const fs::path& contents) { write(contents / "MacOS/.hidden", ""); }},
    Change{"a file is gone", [](const fs::path& contents) { fs::remove(contents / "MacOS/camera"); }},
    Change{"a pipe is added", [](const fs::path& contents) { replaceByPipe(contents / "MacOS/pipe"); }},
    Change{"a file is a pipe", [](const fs::path& contents) { replaceByPipe(contents / "MacOS/camera"); }},
    Change{"a file is a link that says the same",
           [](const fs::path& contents) { link(contents / "MacOS/camera", "code"); }},
    Change{"a link is a file that says the same", replaceLinkByItsWords},
    Change{"a link leads to another file", [](const fs::path& contents) { link(contents / "toFile", "Info.plist"); }},
    Change{"a link leads to another folder", [](const fs::path& contents) { link(contents / "toFolder", "/tmp"); }},
    Change{"a link to a folder is added", [](const fs::path& contents) { link(contents / "another", "MacOS"); }},
};

TEST_F(ASealedExtension, NoLongerMatchesItsSealAfterAnyChangeUntilItIsSealedAnew) {
    const fs::path sound = folder / "sound";
    fs::copy(extension, sound, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    for (const auto& [name, make] : changes) {
        ASSERT_TRUE(isAsSealed(extension)) << name;
        make(contents);
        EXPECT_FALSE(isAsSealed(extension)) << name;
        fs::remove_all(extension);
        fs::copy(sound, extension, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    }
    write(contents / "MacOS/camera", "mode");
    sealBoth();
    EXPECT_TRUE(isAsSealed(extension));
}

/// A driver that keeps its Info.plist, its executable and its seal beside each other, in no Contents folder.
class AFlatDriver : public ABundleOnDisk {
protected:
    AFlatDriver() {
        write(driver / "Info.plist", {{"CFBundleIdentifier", "com.example.driver"},
                                      {"CFBundleVersion", "2105"},
                                      {"OSBundleUsageDescription", "To reach the camera."}});
        write(driver / "com.example.driver", "code");
    }

    fs::path driver = extensions / "com.example.driver.dext";
};

TEST_F(AFlatDriver, IsReadAndSealedInItsRoot) {
    EXPECT_FALSE(isAsSealed(driver));
    for (int time = 0; time < 2; ++time) {
        ASSERT_EQ(seal(driver, {"--team", "TEAM"}), 0);
        EXPECT_TRUE(fs::exists(driver / "_SimulatedSignature.plist"));
        EXPECT_FALSE(fs::exists(driver / "Contents"));
        EXPECT_TRUE(isAsSealed(driver));
    }
    const ExtensionOnDisk found = read().extensions.at(1);
    EXPECT_EQ(found.identifier, "com.example.driver");
    EXPECT_EQ(found.version.version, "2105");
    EXPECT_EQ(found.category, Category::driver);
    EXPECT_TRUE(found.hasUsageDescription);
    EXPECT_EQ(found.team, "TEAM");
    write(driver / "com.example.driver", "mode");
    EXPECT_FALSE(isAsSealed(driver));
}

} // namespace
} // namespace simulator
