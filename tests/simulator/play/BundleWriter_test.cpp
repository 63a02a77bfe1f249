#include "simulator/play/BundleWriter.h"

#include "simulator/disk/RealDisk.h"
#include "simulator/scenario/Mac.h"
#include "simulator/scenario/SampleApplication.h"
#include "simulator/scenario/Scenario.h"

#include <QFileInfo>
#include <QTemporaryDir>

namespace simulator {

namespace {

std::ostream& operator<<(std::ostream& stream, const std::set<std::string>& texts) {
    for (const std::string& text : texts)
        stream << text << ' ';
    return stream;
}

std::string textOf(const ExtensionOnDisk& extension) {
    std::ostringstream text;
    text << extension.fileName << '|' << extension.identifier << '|' << extension.shortVersion << '|'
         << extension.version << '|' << extension.name << '|'
         << (extension.category ? nameOf(*extension.category) : "unknown") << '|' << extension.hasUsageDescription
         << '|' << extension.machServiceName << '|' << extension.team << '|' << extension.applicationGroups << '|'
         << extension.sealMatches << '\n';
    return text.str();
}

/// Everything that is known of a bundle but its path.
std::string textOf(const BundleOnDisk& bundle) {
    std::string text = bundle.identifier + '|' + bundle.team + '|' + (bundle.mayInstallExtensions ? "may" : "may not");
    text += '\n';
    for (const ExtensionOnDisk& extension : bundle.extensions)
        text += textOf(extension);
    return text;
}

class ABundleThatIsWritten : public testing::Test {
protected:
    /// As it is read from the disk afterwards.
    std::string writtenAndRead(const BundleOnDisk& bundle) {
        play::writeBundle(bundle, path(), SUBMIT);
        return textOf(RealDisk{}.read(path().toStdString()).value());
    }

    QString path() const { return folder.filePath("Applications/Manager.app"); }

    QTemporaryDir folder;
};

/// The sample application with one more extension, as a line of a scenario says.
BundleOnDisk carrying(const std::string& line) {
    BundleOnDisk bundle = scenario::sampleApplication();
    const auto scenario = scenario::readScenario("carry " + line, "test", ".");
    scenario::carry(bundle, std::get<scenario::Carry>(scenario.steps.at(0).action));
    return bundle;
}

} // namespace

TEST_F(ABundleThatIsWritten, IsReadAsItIsDescribed) {
    const BundleOnDisk bundle = scenario::sampleApplication();
    EXPECT_EQ(writtenAndRead(bundle), textOf(bundle));
}

TEST_F(ABundleThatIsWritten, IsReadAsItIsDescribedWhateverIsWrongWithIt) {
    for (const auto* const line :
         {"com.x.dext 1.0/100 damaged", "com.x.dext 1.0/100 without seal", "com.x.dext 1.0/100 without identifier",
          "com.x.dext 1.0/100 without usage-description", "com.x.dext 1.0/100 identifier com.y",
          "com.x.dext 1.0/100 team OTHER00001", "com.x.systemextension 1.0/100 without usage-description",
          "com.x.systemextension 1.0/100 service com.x", "com.x.systemextension 1.0/100 category unknown",
          "com.x.systemextension 1.0/100 category network_extension",
          "com.x.systemextension 1.0/100 category endpoint_security", "com.x.kext 1.0/100"}) {
        const BundleOnDisk bundle = carrying(line);
        EXPECT_EQ(writtenAndRead(bundle), textOf(bundle)) << line;
    }
}

TEST_F(ABundleThatIsWritten, MayLackTheEntitlementOrTheSeal) {
    BundleOnDisk bundle = scenario::sampleApplication();
    bundle.mayInstallExtensions = false;
    EXPECT_EQ(writtenAndRead(bundle), textOf(bundle));
    bundle.team.clear();
    EXPECT_EQ(writtenAndRead(bundle), textOf(bundle));
}

TEST_F(ABundleThatIsWritten, LeavesNothingOfTheOneBefore) {
    writtenAndRead(carrying("com.x.dext 1.0/100"));
    const BundleOnDisk bundle = scenario::sampleApplication();
    EXPECT_EQ(writtenAndRead(bundle), textOf(bundle));
}

TEST_F(ABundleThatIsWritten, HoldsTheProgramThatItRuns) {
    writtenAndRead(scenario::sampleApplication());
    EXPECT_TRUE(QFileInfo{play::programOf(path())}.isExecutable());
    EXPECT_EQ(bundleOfFile(play::programOf(path()).toStdString()), path().toStdString());
}

TEST_F(ABundleThatIsWritten, IsNotOneWhereThereIsNoRoomForIt) {
    EXPECT_THROW(play::writeBundle(scenario::sampleApplication(), "/proc/Manager.app", SUBMIT), scenario::NotDone);
    EXPECT_THROW(play::writeBundle(scenario::sampleApplication(), path(), "/nowhere"), scenario::NotDone);
}

} // namespace simulator
