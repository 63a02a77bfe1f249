// What applications hear and who they are, each a process of its own. The roads that their requests take are played by
// the scenarios on the bus.

#include "tests/simulator/support/SimulatedMac.h"

#include <QDir>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace simulator::tests {

namespace {

using testing::ElementsAre;

class AnApplication : public OnASimulatedMac {
protected:
    std::unique_ptr<Application> application = mac.application();
};

TEST_F(AnApplication, HearsWhatItAskedAndNothingElse) {
    const auto other = mac.application();
    for (const auto* const token : {"a", "b"}) {
        application->submit(token, "properties", camera);
        ASSERT_TRUE(application->hears(QString{token} + " found none"));
        other->submit("c" + QString{token}, "properties", driver);
        ASSERT_TRUE(other->hears("c" + QString{token} + " found none"));
    }
    EXPECT_EQ(application->lines(), (QStringList{"a found none", "b found none"}));
    EXPECT_EQ(other->lines(), (QStringList{"ca found none", "cb found none"}));
}

TEST_F(AnApplication, ThatLeavesTheBusHasNoRequestAnyMore) {
    application->submit("a", "activation", camera);
    ASSERT_TRUE(application->hears("a needs approval"));
    ASSERT_EQ(must(mac.control().ListRequests()).value().size(), 1);
    const QSignalSpy changes{&mac.control(), &Control::Changed};
    EXPECT_TRUE(application->kill());
    EXPECT_TRUE(until([&] { return must(mac.control().ListRequests()).value().isEmpty(); }));
    EXPECT_THAT(mac.copies(camera), ElementsAre("2105 waiting"));
}

TEST_F(AnApplication, IsToldLikeEveryoneThatTheMachineRestarts) {
    const auto stray = mac.applicationAt(SUBMIT);
    EXPECT_EQ(mac.does("restart"), "");
    EXPECT_TRUE(application->ended());
    EXPECT_TRUE(stray->ended());
}

TEST_F(AnApplication, IsFoundWhereItWasMovedWhileItRuns) {
    application->submit("a", "properties", camera);
    ASSERT_TRUE(application->hears("a found none"));
    QString bundle = mac.applications() + "/Driver Manager.app";
    const auto moveTo = [&](const QString& path) {
        QDir{}.mkpath(QFileInfo{path}.path());
        ASSERT_TRUE(QDir{}.rename(bundle, path));
        bundle = path;
    };
    moveTo(mac.folder() + "/Downloads/Driver Manager.app");
    application->submit("b", "activation", camera);
    EXPECT_TRUE(application->hears("b failed 3 \"The application must be in an Applications folder.\""));
    moveTo(mac.applications() + "/Suite.app/Contents/Applications/Driver Manager.app");
    application->submit("c", "activation", camera);
    EXPECT_TRUE(application->hears("c failed 1 \"The application is inside another application.\""));
    moveTo(mac.applications() + "/Drivers.app");
    application->submit("d", "activation", camera);
    EXPECT_TRUE(application->hears("d needs approval"));
}

} // namespace

} // namespace simulator::tests
