// What the command line and System Settings see and do.

#include "tests/simulator/application/SampleBundle.h"
#include "tests/simulator/support/Printing.h"
#include "tests/simulator/support/Until.h"
#include "tests/simulator/sysextd/TheService.h"

#include <QFileInfo>
#include <QSignalSpy>

namespace simulator::tests {

namespace {

class TheControl : public TheService {};

TEST_F(TheControl, SaysWhyItRefuses) {
    EXPECT_EQ(errorOf(control().Allow(camera)), "NothingWaiting");
    EXPECT_EQ(errorOf(control().Allow("com.example.unknown")), "UnknownIdentifier");
    EXPECT_EQ(errorOf(control().Install(camera, "1", "1", "asleep")), "InvalidArgument");
    EXPECT_EQ(errorOf(control().SetApplicationsFolders({"relative"})), "InvalidArgument");
    EXPECT_EQ(errorOf(control().SetProfile("nonsense")), "InvalidArgument");
    EXPECT_EQ(errorOf(control().SetSwitch("denial", "perhaps")), "InvalidArgument");
    EXPECT_EQ(errorOf(control().OrderFault("any", "fire", {}, 0, {}, 0)), "InvalidArgument");
    EXPECT_EQ(errorOf(control().OrderFault("nothing", "silent", {}, 0, {}, 0)), "InvalidArgument");
    EXPECT_EQ(errorOf(control().Advance(-1)), "InvalidArgument");
}

TEST_F(TheControl, KeepsTheProfileThatItHasWhereAnotherIsMalformed) {
    const QByteArray profile = "<plist version=\"1.0\"><dict><key>AllowUserOverrides</key><true/></dict></plist>";
    must(control().SetProfile(profile));
    auto reply = control().SetProfile(QByteArray{profile}.replace("<true/>", "<integer>1</integer>"));
    EXPECT_EQ(errorOf(reply), "InvalidArgument");
    EXPECT_EQ(reply.error().message(), "the profile is malformed: AllowUserOverrides has to be true or false");
    EXPECT_EQ(must(control().GetProfile()).value(), profile);
}

TEST_F(TheControl, RefusesToEnableWhatTheProfileForbids) {
    must(control().SetProfile("<plist version=\"1.0\"><dict><key>AllowUserOverrides</key><false/></dict></plist>"));
    must(control().Install(camera, "1.0", "1", "waiting"));
    must(control().Install(driver, "1.0", "1", "disabled"));
    EXPECT_EQ(errorOf(control().Allow(camera)), "ForbiddenByProfile");
    EXPECT_EQ(errorOf(control().Enable(driver)), "ForbiddenByProfile");
    EXPECT_EQ(errorOf(control().Install(driver, "1.0", "2", "enabled")), "ForbiddenByProfile");
}

TEST_F(TheControl, ListsCopiesByCategoryThenIdentifierThenAge) {
    must(control().Install(driver, "1.0", "1", "enabled"));
    must(control().Install(camera, "1.0", "2", "uninstalling"));
    must(control().Install(camera, "1.0", "3", "waiting"));
    const QList<CopyEntry> list = must(control().ListCopies()).value();
    ASSERT_EQ(list.size(), 3);
    EXPECT_EQ(list[0].version, "2");
    EXPECT_EQ(list[1].version, "3");
    EXPECT_EQ(list[2].version, "1");
    EXPECT_EQ(list[1].category, "com.apple.system_extension.cmio");
    EXPECT_EQ(list[1].team, "KELVRA0001");
    EXPECT_EQ(list[1].name, "Camera");
    EXPECT_EQ(list[1].state, "activated waiting for user");
    EXPECT_FALSE(list[1].enabled);
    EXPECT_TRUE(list[1].active);
}

TEST_F(TheControl, KnowsTheExtensionsInTheApplicationsFolder) {
    EXPECT_EQ(must(control().ListIdentifiers()).value(), (QStringList{driver, camera}));
}

TEST_F(TheControl, ListsWhatIsPending) {
    const auto asker = application();
    asker->tell(QString{"submit a activation "} + camera);
    ASSERT_TRUE(asker->hears("a needs approval"));
    const QList<RequestEntry> list = must(control().ListRequests()).value();
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(list[0].token, "a");
    EXPECT_EQ(list[0].kind, "activation");
    EXPECT_EQ(list[0].identifier, camera);
    EXPECT_EQ(list[0].stage, "user");
    EXPECT_EQ(list[0].application, QFileInfo{applications()}.canonicalFilePath() + "/Driver Manager.app");
}

TEST_F(TheControl, TellsThatSomethingChangedOnceItCanBeSeen) {
    const QSignalSpy changed{&control(), &Control::Changed};
    const QSignalSpy events{&control(), &Control::Event};
    must(control().Install(camera, "1.0", "1", "enabled"));
    ASSERT_TRUE(until([&] { return changed.count() == 1; }));
    ASSERT_EQ(events.count(), 1);
    EXPECT_EQ(events[0][1].toString(), camera);
    EXPECT_EQ(events[0][2].toString(), "1.0/1: activated enabled");
}

TEST_F(TheControl, KeepsAndShowsItsSettings) {
    must(control().SetDeveloperMode(true));
    must(control().SetSwitch("denial", "silence"));
    EXPECT_EQ(must(control().Advance(90000)).value(), 90000);
    EXPECT_TRUE(must(control().GetDeveloperMode()).value());
    EXPECT_EQ(must(control().GetApplicationsFolders()).value(),
              QStringList{QFileInfo{applications()}.canonicalFilePath()});
    const QList<SwitchEntry> switches = must(control().ListSwitches()).value();
    EXPECT_EQ(switches[1].name, "denial");
    EXPECT_EQ(switches[1].value, "silence");
    EXPECT_EQ(switches[1].values, (QStringList{"error", "silence"}));
}

TEST_F(TheControl, ActivatesWithoutApprovalUnderAProfileAndGivesItBack) {
    const QByteArray profile = R"(<plist version="1.0"><dict><key>AllowedTeamIdentifiers</key>
        <array><string>KELVRA0001</string></array></dict></plist>)";
    must(control().SetProfile(profile));
    EXPECT_EQ(must(control().GetProfile()).value(), profile);
    const auto asker = application();
    asker->tell(QString{"submit a activation "} + camera);
    EXPECT_TRUE(asker->hears("a finished 0"));
}

} // namespace

} // namespace simulator::tests
