#include "simulator/player/BusMac.h"

#include "simulator/disk/RealDisk.h"
#include "simulator/player/Mac.h"
#include "tests/simulator/player/Played.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <sstream>

namespace simulator::player {
namespace {

std::string textOf(const ExtensionOnDisk& extension) {
    std::ostringstream text;
    text << extension.fileName << '|' << extension.identifier << '|' << extension.version.shortVersion << '|'
         << extension.version.version << '|' << extension.name << '|'
         << (extension.category ? nameOf(*extension.category) : "unknown") << '|' << extension.hasUsageDescription
         << '|' << extension.machServiceName << '|' << extension.team << '|';
    for (const std::string& group : extension.applicationGroups)
        text << group << ' ';
    return text.str() + '\n';
}

/// Everything that is known of a bundle but its path and what its seals are worth.
std::string textOf(const BundleOnDisk& bundle) {
    std::string text = bundle.identifier + '|' + bundle.team + '|' + (bundle.mayInstallExtensions ? "may" : "may not");
    for (const ExtensionOnDisk& extension : bundle.extensions)
        text += '\n' + textOf(extension);
    return text;
}

class ABundleThatIsWritten : public testing::Test {
protected:
    /// As it is read from the disk afterwards.
    std::string writtenAndRead(const BundleOnDisk& bundle) {
        writeBundle(bundle, path(), SUBMIT);
        return textOf(RealDisk{}.read(path().toStdString()).value());
    }
    /// Whether the seal of the extension of that file name is found to match.
    bool isSealed(const std::string& fileName) {
        return isAsSealed(path().toStdString() + "/Contents/Library/SystemExtensions/" + fileName);
    }
    QString path() const { return folder_.filePath("Applications/Manager.app"); }

private:
    QTemporaryDir folder_;
};

/// The sample application after the lines of a scenario.
BundleOnDisk sampleAfter(const std::string& lines) {
    const auto mac = newCoreMac();
    EXPECT_EQ(played("restart\n" + lines, *mac), "as it says");
    return mac->bundleOf("Driver Manager");
}

TEST_F(ABundleThatIsWritten, IsReadAsItIsDescribedWhateverIsWrongWithIt) {
    for (const auto* const line :
         {"", "carry com.x.dext 1.0/100 without seal", "carry com.x.dext 1.0/100 without identifier",
          "carry com.x.dext 1.0/100 without usage-description", "carry com.x.dext 1.0/100 identifier com.y",
          "carry com.x.dext 1.0/100 team OTHER00001", "carry com.x.systemextension 1.0/100 without usage-description",
          "carry com.x.systemextension 1.0/100 service com.x", "carry com.x.systemextension 1.0/100 category unknown",
          "carry com.x.systemextension 1.0/100 category network_extension",
          "carry com.x.systemextension 1.0/100 category endpoint_security", "carry com.x.kext 1.0/100"}) {
        const BundleOnDisk bundle = sampleAfter(line);
        EXPECT_EQ(writtenAndRead(bundle), textOf(bundle)) << line;
    }
}

TEST_F(ABundleThatIsWritten, IsSealedUnlessItIsDamagedOrWithoutASeal) {
    writtenAndRead(sampleAfter("carry a.dext 1/1\ncarry b.dext 1/1 damaged\ncarry c.dext 1/1 without seal"));
    EXPECT_TRUE(isSealed("a.dext"));
    EXPECT_FALSE(isSealed("b.dext"));
    EXPECT_FALSE(isSealed("c.dext"));
}

TEST_F(ABundleThatIsWritten, MayLackTheEntitlementOrTheSeal) {
    BundleOnDisk bundle = sampleAfter("");
    bundle.mayInstallExtensions = false;
    EXPECT_EQ(writtenAndRead(bundle), textOf(bundle));
    bundle.team.clear();
    EXPECT_EQ(writtenAndRead(bundle), textOf(bundle));
}

TEST_F(ABundleThatIsWritten, LeavesNothingOfTheOneBefore) {
    writtenAndRead(sampleAfter("carry com.x.dext 1.0/100"));
    const BundleOnDisk bundle = sampleAfter("");
    EXPECT_EQ(writtenAndRead(bundle), textOf(bundle));
}

TEST_F(ABundleThatIsWritten, HoldsTheProgramThatItRuns) {
    writtenAndRead(sampleAfter(""));
    EXPECT_TRUE(QFileInfo{programOf(path())}.isExecutable());
    EXPECT_EQ(bundleOfFile(programOf(path()).toStdString()), path().toStdString());
}

TEST_F(ABundleThatIsWritten, IsNotOneWhereThereIsNoRoomForIt) {
    EXPECT_THROW(writeBundle(sampleAfter(""), "/proc/Manager.app", SUBMIT), NotDone);
    EXPECT_THROW(writeBundle(sampleAfter(""), path(), "/nowhere"), NotDone);
}

} // namespace
} // namespace simulator::player
