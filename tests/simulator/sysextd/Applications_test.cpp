// What applications ask and hear, each a process of its own.

#include "tests/simulator/application/SampleBundle.h"
#include "tests/simulator/support/Until.h"
#include "tests/simulator/sysextd/TheService.h"

#include <QDir>
#include <QSignalSpy>

namespace simulator::tests {

namespace {

using testing::ElementsAre;

const QString activateCamera = QString{"submit a activation "} + camera;

TEST_F(TheService, TakesAnActivationThroughApprovalToItsEnd) {
    const auto asker = application();
    asker->tell(activateCamera);
    ASSERT_TRUE(asker->hears("a needs approval"));
    must(control().Allow(camera));
    ASSERT_TRUE(asker->hears("a finished 0"));
    EXPECT_THAT(copies(camera), ElementsAre("2105 enabled"));
}

TEST_F(TheService, AsksForReplacementWithBothCopiesAndTakesTheAnswer) {
    must(control().Install(camera, "2.0", "2004", "enabled"));
    const auto asker = application();
    asker->tell(activateCamera);
    ASSERT_TRUE(asker->hears("a replace 2.0/2004 enabled by 2.1/2105 neither?"));
    asker->tell("answer a replace");
    ASSERT_TRUE(asker->hears("a finished 0"));
    EXPECT_THAT(copies(camera), ElementsAre("2004 uninstalling", "2105 enabled"));
}

TEST_F(TheService, FindsTheCopiesOldestFirst) {
    must(control().Install(camera, "1.0", "1", "uninstalling"));
    must(control().Install(camera, "2.0", "2", "enabled"));
    const auto asker = application();
    asker->tell(QString{"submit a properties "} + camera);
    EXPECT_TRUE(asker->hears("a found, 1.0/1 uninstalling, 2.0/2 enabled"));
}

TEST_F(TheService, SpeaksOnlyToTheClientThatAsked) {
    const auto one = application();
    const auto other = application();
    one->tell(QString{"submit a properties "} + camera);
    ASSERT_TRUE(one->hears("a found"));
    other->tell(QString{"submit b properties "} + camera);
    ASSERT_TRUE(other->hears("b found"));
    one->tell(QString{"submit c properties "} + camera);
    ASSERT_TRUE(one->hears("c found"));
    EXPECT_EQ(one->lines(), (QStringList{"a found", "c found"}));
    EXPECT_EQ(other->lines(), QStringList{"b found"});
}

TEST_F(TheService, FailsAnActivationOfAProgramThatLiesInNoBundle) {
    const auto program = strayProgram();
    program->tell(activateCamera);
    EXPECT_TRUE(program->hears("a failed OSSystemExtensionErrorDomain 4 "
                               "(The application holds no extension of this identifier.)"));
}

TEST_F(TheService, FailsADeactivationOfAProgramThatLiesInNoBundle) {
    must(control().Install(camera, "2.1", "2105", "enabled"));
    const auto program = strayProgram();
    program->tell(QString{"submit a deactivation "} + camera);
    ASSERT_TRUE(program->hears("a failed OSSystemExtensionErrorDomain 4 "
                               "(The extension was not found in the application.)"));
    EXPECT_THAT(copies(camera), ElementsAre("2105 enabled"));
}

TEST_F(TheService, FailsAnotherApplicationThatCarriesTheSameExtension) {
    must(control().Install(camera, "2.1", "2105", "enabled"));
    const QString program = makeSampleBundle(applications() + "/Other.app", ASKER, "com.example.other");
    Asker other{program, environment()};
    other.tell(activateCamera);
    EXPECT_TRUE(other.hears("a failed OSSystemExtensionErrorDomain 4 (The extension belongs to another application.)"));
}

TEST_F(TheService, FailsAnActivationFromOutsideTheApplicationsFolder) {
    must(control().SetApplicationsFolders({"/Applications"}));
    const auto asker = application();
    asker->tell(activateCamera);
    EXPECT_TRUE(asker->hears("a failed OSSystemExtensionErrorDomain 3 "
                             "(The application must be in an Applications folder.)"));
}

class AMovedApplication : public TheService {
protected:
    /// The sample application asks, is moved to this bundle while it runs, and activates the camera as "b".
    std::unique_ptr<Asker> activatingFrom(const QString& bundle) {
        auto asker = application();
        asker->tell(QString{"submit a properties "} + camera);
        EXPECT_TRUE(asker->hears("a found"));
        QDir{}.mkpath(QFileInfo{bundle}.path());
        EXPECT_TRUE(QDir{}.rename(applications() + "/Driver Manager.app", bundle));
        asker->tell(QString{"submit b activation "} + camera);
        return asker;
    }
};

TEST_F(AMovedApplication, IsFoundInAnotherFolder) {
    EXPECT_TRUE(activatingFrom(stateFolder() + "/Downloads/Driver Manager.app")
                    ->hears("b failed OSSystemExtensionErrorDomain 3 "
                            "(The application must be in an Applications folder.)"));
}

TEST_F(AMovedApplication, IsFoundInsideAnotherApplication) {
    EXPECT_TRUE(activatingFrom(applications() + "/Suite.app/Contents/Applications/Driver Manager.app")
                    ->hears("b failed OSSystemExtensionErrorDomain 1 "
                            "(The application lies inside another application.)"));
}

TEST_F(AMovedApplication, IsFoundUnderAnotherName) {
    EXPECT_TRUE(activatingFrom(applications() + "/Drivers.app")->hears("b needs approval"));
}

TEST_F(TheService, EndsTheRequestsOfAClientThatLeavesTheBus) {
    const auto asker = application();
    asker->tell(activateCamera);
    ASSERT_TRUE(asker->hears("a needs approval"));
    ASSERT_EQ(must(control().ListRequests()).value().size(), 1);
    const QSignalSpy changes{&control(), &Control::Changed};
    asker->kill();
    EXPECT_TRUE(until([&] { return must(control().ListRequests()).value().isEmpty(); }));
    EXPECT_THAT(copies(camera), ElementsAre("2105 waiting"));
}

TEST_F(TheService, TellsEveryoneThatTheMachineRestarts) {
    const auto one = application();
    const auto other = strayProgram();
    must(control().Restart());
    EXPECT_TRUE(one->hears("restarting"));
    EXPECT_TRUE(other->hears("restarting"));
}

TEST_F(TheService, RefusesAMalformedRequestAndLives) {
    const auto asker = application();
    asker->tell(QString{"submit a reactivation "} + camera);
    EXPECT_TRUE(asker->hears("a refused com.kelvra.Simulator1.Error.InvalidArgument"));
    asker->tell("submit b activation " + QString(256, 'x'));
    EXPECT_TRUE(asker->hears("b refused com.kelvra.Simulator1.Error.InvalidArgument"));
    asker->tell("answer c perhaps");
    EXPECT_TRUE(asker->hears("c refused com.kelvra.Simulator1.Error.InvalidArgument"));
    asker->tell(QString{"submit d properties "} + camera);
    EXPECT_TRUE(asker->hears("d found"));
}

} // namespace

} // namespace simulator::tests
