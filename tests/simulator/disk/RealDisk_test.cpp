#include "simulator/core/Machine.h"
#include "simulator/disk/RealDisk.h"
#include "simulator/disk/Seal.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <sys/stat.h>

#include <filesystem>

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

constexpr auto identifier = "com.example.camera";

void write(const QString& path, const QByteArray& contents) {
    QDir{}.mkpath(QFileInfo{path}.path());
    QFile file{path};
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(contents);
}

QByteArray listOf(const PropertyList::Dictionary& dictionary) {
    return QByteArray::fromStdString(PropertyList{dictionary}.toXml());
}

void makePipe(const QString& path) {
    ASSERT_EQ(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
}

class ABundleOnDisk : public testing::Test {
protected:
    void SetUp() override {
        write(bundle + "/Contents/Info.plist", listOf({{"CFBundleIdentifier", "com.example.manager"}}));
        write(extension + "/Contents/Info.plist", listOf(info));
        write(extension + "/Contents/MacOS/camera", "code");
    }

    int seal(const QStringList& arguments) { return QProcess::execute(SEAL, arguments); }

    void sealBoth() {
        ASSERT_EQ(seal({extension, "--team", "TEAM", "--entitlement", "com.apple.security.application-groups=TEAM.a",
                        "--entitlement", "com.apple.security.application-groups=TEAM.b"}),
                  0);
        ASSERT_EQ(seal({bundle, "--team", "TEAM", "--entitlement", "com.apple.developer.system-extension.install"}), 0);
    }

    /// In the extension, to something else in it.
    void link(const std::string& target, const QString& name) {
        std::filesystem::create_symlink(target, (extension + "/Contents/" + name).toStdString());
    }

    void unlink(const QString& name) { QFile::remove(extension + "/Contents/" + name); }

    /// The code that an activation of the extension fails with; 0 if it needs approval.
    std::int64_t codeOfActivation(const std::string& which = identifier) {
        Machine machine{State{}, disk};
        EXPECT_EQ(machine.setApplicationsFolders({folder.path().toStdString()}), done);
        EXPECT_EQ(machine.submit({"client", "a", bundle.toStdString(), RequestKind::activation, which}), done);
        while (machine.step()) {
        }
        const AnswerBody answer = machine.takeOutbox().answers.at(0).body;
        if (const auto* const failure = std::get_if<Failure>(&answer)) return failure->code;
        EXPECT_TRUE(std::holds_alternative<NeedsApproval>(answer));
        return 0;
    }

    BundleOnDisk read() { return disk.read(bundle.toStdString()).value(); }
    ExtensionOnDisk readExtension() { return read().extensions.at(0); }

    QTemporaryDir folder;
    QString bundle = folder.filePath("Manager.app");
    QString extension = bundle + "/Contents/Library/SystemExtensions/" + identifier + ".systemextension";
    PropertyList::Dictionary info{
        {"CFBundleIdentifier", identifier},
        {"CFBundleShortVersionString", "2.1"},
        {"CFBundleVersion", "2105"},
        {"CFBundleName", "Camera"},
        {"NSSystemExtensionUsageDescription", "To show pictures."},
        {"CMIOExtension", PropertyList::Dictionary{{"CMIOExtensionMachServiceName", "TEAM.a.camera"}}}};
    RealDisk disk;
};

TEST_F(ABundleOnDisk, IsReadWithItsExtension) {
    sealBoth();
    const BundleOnDisk found = read();
    EXPECT_EQ(found.path, bundle.toStdString());
    EXPECT_EQ(found.identifier, "com.example.manager");
    EXPECT_EQ(found.team, "TEAM");
    EXPECT_TRUE(found.mayInstallExtensions);
    ASSERT_THAT(found.extensions, SizeIs(1));
    const ExtensionOnDisk& camera = found.extensions[0];
    EXPECT_EQ(camera.fileName, "com.example.camera.systemextension");
    EXPECT_EQ(camera.identifier, "com.example.camera");
    EXPECT_EQ(camera.shortVersion, "2.1");
    EXPECT_EQ(camera.version, "2105");
    EXPECT_EQ(camera.name, "Camera");
    EXPECT_EQ(camera.category, Category::camera);
    EXPECT_TRUE(camera.hasUsageDescription);
    EXPECT_EQ(camera.machServiceName, "TEAM.a.camera");
    EXPECT_EQ(camera.team, "TEAM");
    EXPECT_THAT(camera.applicationGroups, ElementsAre("TEAM.a", "TEAM.b"));
    EXPECT_TRUE(camera.sealMatches);
}

TEST_F(ABundleOnDisk, HasNoTeamAndNoRightsUntilItIsSealed) {
    EXPECT_EQ(read().team, "");
    EXPECT_FALSE(read().mayInstallExtensions);
    EXPECT_EQ(readExtension().team, "");
    EXPECT_FALSE(readExtension().sealMatches);
}

TEST_F(ABundleOnDisk, NoLongerMatchesItsSealOnceAFileIsChanged) {
    sealBoth();
    write(extension + "/Contents/MacOS/camera", "mode");
    EXPECT_FALSE(readExtension().sealMatches);
}

TEST_F(ABundleOnDisk, NoLongerMatchesItsSealOnceAFileIsAdded) {
    sealBoth();
    write(extension + "/Contents/MacOS/.hidden", "");
    EXPECT_FALSE(readExtension().sealMatches);
}

TEST_F(ABundleOnDisk, NoLongerMatchesItsSealOnceAFileIsGone) {
    sealBoth();
    QFile::remove(extension + "/Contents/MacOS/camera");
    EXPECT_FALSE(readExtension().sealMatches);
}

TEST_F(ABundleOnDisk, MatchesAgainOnceItIsSealedAnew) {
    sealBoth();
    write(extension + "/Contents/MacOS/camera", "mode");
    sealBoth();
    EXPECT_TRUE(readExtension().sealMatches);
}

TEST_F(ABundleOnDisk, NoLongerMatchesItsSealOnceAPipeIsAdded) {
    sealBoth();
    makePipe(extension + "/Contents/MacOS/pipe");
    EXPECT_FALSE(readExtension().sealMatches);
}

TEST_F(ABundleOnDisk, NoLongerMatchesItsSealOnceAFileIsAPipe) {
    sealBoth();
    QFile::remove(extension + "/Contents/MacOS/camera");
    makePipe(extension + "/Contents/MacOS/camera");
    EXPECT_FALSE(readExtension().sealMatches);
}

TEST_F(ABundleOnDisk, WithAPipeIsNotSealed) {
    makePipe(extension + "/Contents/MacOS/pipe");
    EXPECT_EQ(seal({extension, "--team", "TEAM"}), 1);
}

TEST_F(ABundleOnDisk, MatchesItsSealThatWasWrittenByARelativePath) {
    sealBoth();
    QProcess program;
    program.setWorkingDirectory(QFileInfo{extension}.path());
    program.start(SEAL, {QFileInfo{extension}.fileName(), "--team", "OTHER"});
    ASSERT_TRUE(program.waitForFinished());
    ASSERT_EQ(program.exitCode(), 0);
    EXPECT_EQ(readExtension().team, "OTHER");
    EXPECT_TRUE(readExtension().sealMatches);
}

TEST_F(ABundleOnDisk, MatchesItsSealWithItsLinksWhereverItIsMoved) {
    link("MacOS/camera", "toFile");
    link("MacOS", "toFolder");
    link("nowhere", "toNothing");
    sealBoth();
    ASSERT_TRUE(QDir{}.rename(bundle, folder.filePath("Moved.app")));
    const auto moved = disk.read(folder.filePath("Moved.app").toStdString()).value();
    EXPECT_TRUE(moved.extensions.at(0).sealMatches);
}

TEST_F(ABundleOnDisk, FailsWithEightOnceAFileThatSaysTheSameIsInThePlaceOfALink) {
    link("MacOS/camera", "link");
    sealBoth();
    EXPECT_EQ(codeOfActivation(), 0);
    unlink("link");
    write(extension + "/Contents/link", "MacOS/camera");
    EXPECT_EQ(codeOfActivation(), code::codeSignatureInvalid);
}

TEST_F(ABundleOnDisk, FailsWithEightOnceALinkThatSaysTheSameIsInThePlaceOfAFile) {
    sealBoth();
    unlink("MacOS/camera");
    link("code", "MacOS/camera");
    EXPECT_EQ(codeOfActivation(), code::codeSignatureInvalid);
}

TEST_F(ABundleOnDisk, NoLongerMatchesItsSealOnceALinkToAFileLeadsElsewhere) {
    link("MacOS/camera", "link");
    sealBoth();
    unlink("link");
    link("Info.plist", "link");
    EXPECT_FALSE(readExtension().sealMatches);
}

TEST_F(ABundleOnDisk, NoLongerMatchesItsSealOnceALinkToAFolderLeadsElsewhere) {
    link("MacOS", "link");
    sealBoth();
    unlink("link");
    link("/tmp", "link");
    EXPECT_FALSE(readExtension().sealMatches);
}

TEST_F(ABundleOnDisk, NoLongerMatchesItsSealOnceALinkToAFolderIsAdded) {
    sealBoth();
    link("MacOS", "link");
    EXPECT_FALSE(readExtension().sealMatches);
}

TEST_F(ABundleOnDisk, MayHaveAnExtensionWithAPipeForAnInfoPlist) {
    QFile::remove(extension + "/Contents/Info.plist");
    makePipe(extension + "/Contents/Info.plist");
    EXPECT_EQ(readExtension().identifier, "");
}

TEST_F(ABundleOnDisk, MayHaveAnExtensionWithoutAnInfoPlist) {
    QFile::remove(extension + "/Contents/Info.plist");
    EXPECT_EQ(readExtension().identifier, "");
    EXPECT_EQ(readExtension().category, std::nullopt);
}

TEST_F(ABundleOnDisk, MayHaveAnExtensionWithAnInfoPlistThatIsNone) {
    write(extension + "/Contents/Info.plist", "nonsense");
    EXPECT_EQ(readExtension().identifier, "");
}

TEST_F(ABundleOnDisk, TellsTheCategoriesApart) {
    const auto categoryWith = [&](const PropertyList::Dictionary& keys) {
        write(extension + "/Contents/Info.plist", listOf(keys));
        return readExtension().category;
    };
    EXPECT_EQ(categoryWith({}), std::nullopt);
    EXPECT_EQ(categoryWith({{"NetworkExtension", PropertyList::Dictionary{}}}), Category::network);
    EXPECT_EQ(categoryWith({{"NSEndpointSecurityMachServiceName", "x"}}), Category::endpointSecurity);
    QDir{}.rename(extension, bundle + "/Contents/Library/SystemExtensions/com.example.camera.dext");
    EXPECT_EQ(readExtension().category, Category::driver);
}

TEST_F(ABundleOnDisk, NamesAnExtensionAsItIsDisplayedOrElseByItsFile) {
    const auto nameWith = [&](const PropertyList::Dictionary& keys) {
        write(extension + "/Contents/Info.plist", listOf(keys));
        return readExtension().name;
    };
    EXPECT_EQ(nameWith({{"CFBundleName", "Camera"}, {"CFBundleDisplayName", "The Camera"}}), "The Camera");
    EXPECT_EQ(nameWith({{"CFBundleName", "Camera"}}), "Camera");
    EXPECT_EQ(nameWith({}), identifier);
}

TEST_F(ABundleOnDisk, ReadsAVersionThatIsANumberAsItsText) {
    write(
        extension + "/Contents/Info.plist",
        R"(<?xml version="1.0"?><plist version="1.0"><dict><key>CFBundleVersion</key><integer>2105</integer></dict></plist>)");
    EXPECT_EQ(readExtension().version, "2105");
}

/// A driver that keeps its Info.plist, its executable and its seal beside each other, in no Contents folder.
class AFlatDriver : public ABundleOnDisk {
protected:
    void SetUp() override {
        ABundleOnDisk::SetUp();
        write(driver + "/Info.plist", listOf({{"CFBundleIdentifier", "com.example.driver"},
                                              {"CFBundleVersion", "2105"},
                                              {"OSBundleUsageDescription", "To reach the camera."}}));
        write(driver + "/com.example.driver", "code");
    }

    void sealAll() {
        ASSERT_EQ(seal({driver, "--team", "TEAM"}), 0);
        sealBoth();
    }

    QString driver = bundle + "/Contents/Library/SystemExtensions/com.example.driver.dext";
};

TEST_F(AFlatDriver, IsReadFromItsRoot) {
    sealAll();
    ASSERT_THAT(read().extensions, SizeIs(2));
    const ExtensionOnDisk found = read().extensions.at(1);
    EXPECT_EQ(found.identifier, "com.example.driver");
    EXPECT_EQ(found.version, "2105");
    EXPECT_EQ(found.category, Category::driver);
    EXPECT_TRUE(found.hasUsageDescription);
    EXPECT_EQ(found.team, "TEAM");
    EXPECT_TRUE(found.sealMatches);
}

TEST_F(AFlatDriver, IsSealedInItsRootAlone) {
    sealAll();
    EXPECT_TRUE(QFileInfo::exists(driver + "/_SimulatedSignature.plist"));
    EXPECT_FALSE(QFileInfo::exists(driver + "/Contents"));
}

TEST_F(AFlatDriver, IsActivated) {
    sealAll();
    EXPECT_EQ(codeOfActivation("com.example.driver"), 0);
}

TEST_F(AFlatDriver, MatchesItsSealWhenItIsSealedAgain) {
    sealAll();
    sealAll();
    EXPECT_EQ(codeOfActivation("com.example.driver"), 0);
}

TEST_F(AFlatDriver, FailsWithEightOnceAFileIsChanged) {
    sealAll();
    write(driver + "/com.example.driver", "mode");
    EXPECT_EQ(codeOfActivation("com.example.driver"), code::codeSignatureInvalid);
}

TEST_F(AFlatDriver, FailsWithEightUntilItIsSealed) {
    sealBoth();
    EXPECT_EQ(codeOfActivation("com.example.driver"), code::codeSignatureInvalid);
}

TEST_F(ABundleOnDisk, IsFoundInItsFolderAndNothingElseIs) {
    QDir{}.mkpath(folder.filePath("Notes"));
    write(folder.filePath("File.app"), "");
    EXPECT_THAT(disk.bundlesIn(folder.path().toStdString()), ElementsAre(bundle.toStdString()));
    EXPECT_THAT(disk.bundlesIn("/nowhere"), testing::IsEmpty());
}

TEST_F(ABundleOnDisk, IsFoundFromTheProgramThatRunsInIt) {
    EXPECT_EQ(bundleOfFile(bundle.toStdString() + "/Contents/MacOS/Manager"), bundle.toStdString());
    EXPECT_EQ(bundleOfFile("/usr/bin/true"), "");
}

TEST_F(ABundleOnDisk, IsNoneWhereThereIsNothing) {
    EXPECT_FALSE(disk.read("/nowhere.app"));
}

TEST_F(ABundleOnDisk, IsNotSealedWithoutATeamOrAnInfoPlist) {
    EXPECT_EQ(seal({extension}), 2);
    EXPECT_EQ(seal({folder.path(), "--team", "TEAM"}), 1);
}

} // namespace
} // namespace simulator
