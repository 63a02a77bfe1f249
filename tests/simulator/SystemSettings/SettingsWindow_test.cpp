#include "tests/simulator/SystemSettings/SettingsWindowTest.h"

#include "tests/simulator/support/Program.h"

#include <QAccessible>
#include <QScrollArea>
#include <QScrollBar>

#include <csignal>

namespace simulator::tests {

namespace {

TEST_F(SystemSettings, SaysWhatIsThereAndHowItStands) {
    open(copies("waiting", "enabled") << removedNetwork());
    EXPECT_EQ(texts(), (QStringList{"Privacy & Security", "Camera Extensions", "Camera", "2.1/2105", camera,
                                    "Needs approval", "Driver Extensions", "Network", "2.1/2105", network, "Enabled",
                                    "Network", "2.0/2004", network, "Removed at restart", "Other Extensions",
                                    "No other extension is installed.", "A restart ends every application."}));
}

TEST_F(SystemSettings, SaysSoIfNothingIsInstalledAnyMore) {
    open(copies("enabled"));
    control().show({});
    EXPECT_TRUE(untilSaid("No camera extension is installed."));
    EXPECT_TRUE(says("No driver is installed."));
    EXPECT_FALSE(shows("Enable Camera"));
}

TEST_F(SystemSettings, ShowsATextAsItIsWhateverItHolds) {
    auto copy = copyIn("waiting");
    copy.name = "<b>Bold</b> & <img src=x>";
    open({copy});
    EXPECT_TRUE(says("<b>Bold</b> & <img src=x>"));
    EXPECT_TRUE(shows("Allow <b>Bold</b> & <img src=x>"));
    for (const auto* label : window().findChildren<QLabel*>())
        EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->text().toStdString();
    for (const auto* button : window().findChildren<QAbstractButton*>())
        EXPECT_TRUE(button->shortcut().isEmpty()) << button->text().toStdString();
}

TEST_F(SystemSettings, TellsAssistiveTechnologyWhatEachPartIs) {
    openWithQuestion();
    const auto above = [this](const QString& name, int steps) {
        auto* interface = QAccessible::queryAccessibleInterface(named(name));
        for (; steps > 0; --steps)
            interface = interface->parent();
        return std::pair{interface->role(), interface->text(QAccessible::Name)};
    };
    EXPECT_EQ(above("Enable Network", 0), std::pair(QAccessible::CheckBox, QString{"Enable Network"}));
    EXPECT_EQ(above("Enable Network", 1), std::pair(QAccessible::ListItem, QString{"Network 2.1/2105, Enabled"}));
    EXPECT_EQ(above("Enable Network", 2), std::pair(QAccessible::List, QString{"Driver Extensions"}));
    EXPECT_EQ(above("Authorize Network", 0), std::pair(QAccessible::Button, QString{"Authorize Network"}));
    EXPECT_EQ(above("Authorize Network", 1), std::pair(QAccessible::Dialog, QString{"An administrator has to agree"}));
    EXPECT_EQ(above("Authorize Network", 3), std::pair(QAccessible::Window, QString{"System Settings"}));
}

TEST_F(SystemSettings, TellsTheServiceWhatIsPressedByMouseReturnOrAssistiveTechnology) {
    open(copies("waiting", "enabled"));
    click("Restart");
    EXPECT_TRUE(untilDone("restart"));
    press("Deny Camera");
    EXPECT_TRUE(untilDone("deny " + camera));
    QTest::keyClick(named("Allow Camera"), Qt::Key_Return);
    EXPECT_TRUE(untilDone("allow " + camera));
    QTest::keyClick(named("Enable Network"), Qt::Key_Return);
    EXPECT_TRUE(untilDone("disable " + network));
}

TEST_F(SystemSettings, TurnsASwitchOnlyWhenTheServiceSaysSo) {
    const auto isOn = [this] {
        return QAccessible::queryAccessibleInterface(named("Enable Network"))->state().checked;
    };
    open(copies({}, "enabled"));
    click("Enable Network");
    ASSERT_TRUE(untilDone("disable " + network));
    EXPECT_TRUE(isOn());
    control().show(copies({}, "disabled"));
    ASSERT_TRUE(untilSaid("Disabled"));
    EXPECT_FALSE(isOn());
    click("Enable Network");
    EXPECT_TRUE(untilDone("enable " + network));
}

TEST_F(SystemSettings, TakesAToggleOfASwitchByAssistiveTechnologyForAPress) {
    open(copies("enabled", "enabled"));
    press("Enable Network", QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(untilDone("disable " + network));
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(named("Enable Network"))->state().checked);
    EXPECT_EQ(control().deeds().size(), 1);
}

TEST_F(SystemSettings, TellsAssistiveTechnologyTheSizeOfASwitchAsDrawn) {
    open(copies("enabled", "enabled"));
    const auto* told = QAccessible::queryAccessibleInterface(named("Enable Network"));
    EXPECT_TRUE(until([told] { return told->rect().size() == QSize(38, 22); }));
}

TEST_F(SystemSettings, AsksFewTimesForManyChanges) {
    open();
    for (auto change = 0; change < 500; ++change)
        emit control().Changed();
    control().show(copies("waiting"));
    EXPECT_TRUE(untilShown("Allow Camera"));
    EXPECT_LT(control().timesAsked("ListCopies"), 100);
}

TEST_F(SystemSettings, SaysWhyTheServiceRefuses) {
    open(copies("waiting"));
    control().refuse("allow", "NotPermitted", "the profile forbids it");
    press("Allow Camera");
    EXPECT_TRUE(untilSaid("the profile forbids it"));
    EXPECT_FALSE(shows("Start the simulated Mac"));
}

TEST_F(SystemSettings, SaysWhatAManagementProfileForbidsWhereItIsSeen) {
    open(copies("waiting", "disabled") << removedNetwork());
    window().resize(window().minimumSize());
    auto* const bar = window().findChild<QScrollArea*>()->verticalScrollBar();
    ASSERT_TRUE(until([bar] { return bar->maximum() > 0; }));
    bar->setValue(bar->maximum());
    control().refuse("enable", "ForbiddenByProfile", "x");
    press("Enable Network");
    ASSERT_TRUE(untilSaid("A management profile forbids " + network + "."));
    EXPECT_EQ(bar->value(), 0);
}

TEST_F(SystemSettings, ScrollsByPagesWhereverKeyboardFocusIs) {
    open(copies("enabled", "enabled") << removedNetwork());
    window().resize(window().minimumSize());
    const auto* const bar = window().findChild<QScrollArea*>()->verticalScrollBar();
    ASSERT_TRUE(until([bar] { return bar->maximum() > 0; }));
    for (const QString name : {"Restart", "Enable Network"}) {
        named(name)->setFocus();
        key(Qt::Key_PageUp);
        EXPECT_EQ(bar->value(), 0);
        key(Qt::Key_PageDown);
        EXPECT_GT(bar->value(), 0);
    }
}

TEST_F(SystemSettings, LooksAgainAndSaysNothingIfSomeoneElseWasQuicker) {
    open(copies("waiting"));
    control().refuse("allow", "NothingWaiting", "nothing waits");
    const auto asked = control().timesAsked("ListCopies");
    press("Allow Camera");
    ASSERT_TRUE(untilAsked("ListCopies", asked + 1));
    EXPECT_FALSE(says("nothing waits"));
}

TEST_F(SystemSettings, ShowsNothingButAWayToStartTheServiceUntilItIsBack) {
    open(copies("waiting"));
    control().leave();
    ASSERT_TRUE(untilSaid("The simulated Mac is not running."));
    EXPECT_TRUE(shows("Start the simulated Mac"));
    EXPECT_FALSE(says("Camera Extensions"));
    EXPECT_FALSE(named("Restart")->isEnabled());
    control().comeBack();
    ASSERT_TRUE(untilShown("Allow Camera"));
    EXPECT_FALSE(says("The simulated Mac is not running."));
    EXPECT_TRUE(named("Restart")->isEnabled());
}

TEST_F(SystemSettings, StartsTheServiceOnlyIfThePersonSaysSo) {
    const QTemporaryDir folder;
    QFile starter{folder.filePath("starter")};
    ASSERT_TRUE(starter.open(QIODevice::WriteOnly));
    starter.write("#!/bin/sh\ntouch \"${0%/*}/started\"\nexit 1\n");
    starter.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    starter.close();
    const auto wasStarted = [&folder] { return QFile::exists(folder.filePath("started")); };
    open(copies("waiting"));
    bus().makeActivatable(serviceName, starter.fileName());
    control().leave();
    ASSERT_TRUE(untilSaid("The simulated Mac is not running."));
    EXPECT_FALSE(wasStarted());
    press("Start the simulated Mac");
    EXPECT_TRUE(until(wasStarted));
}

TEST_F(SystemSettings, SaysSoIfTheBusIsGone) {
    open();
    bus().stop();
    EXPECT_TRUE(untilSaid("There is no session bus, so there is no simulated Mac."));
    EXPECT_FALSE(shows("Start the simulated Mac"));
}

TEST_F(SystemSettings, AsksTheAdministratorsQuestionOverEverythingElse) {
    openWithQuestion();
    EXPECT_TRUE(says("Driver Manager wants to remove Network."));
    EXPECT_EQ(texts().count(network), 2); // in its row and in the question
    EXPECT_FALSE(named("Enable Network")->isEnabled());
    EXPECT_FALSE(named("Restart")->isEnabled());
    EXPECT_EQ(walk(2), (QStringList{"Refuse Network", "Authorize Network"}));
}

TEST_F(SystemSettings, SaysThatAnotherQuestionFollowsAndThenAsksIt) {
    openWithQuestion();
    EXPECT_FALSE(says("Another removal follows."));
    named("Refuse Network")->setFocus();
    control().showRequests({question(network), question(camera, "Driver Manager", 2)});
    ASSERT_TRUE(untilSaid("Another removal follows."));
    EXPECT_EQ(focused(), "Refuse Network");
    control().showRequests({question(camera, "Driver Manager", 2)});
    ASSERT_TRUE(untilShown("Authorize Camera"));
    EXPECT_FALSE(says("Another removal follows."));
    EXPECT_EQ(focused(), "Authorize Camera");
}

TEST_F(SystemSettings, RefusesAtEscape) {
    openWithQuestion();
    key(Qt::Key_Escape);
    EXPECT_TRUE(untilDone("refuse " + network));
}

TEST_F(SystemSettings, TakesADoubleClickAndAKeyThatIsHeldForOneAnswer) {
    openWithQuestion();
    auto* const authorize = named("Authorize Network");
    QKeyEvent held{QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true};
    click("Authorize Network");
    QTest::mouseDClick(authorize, Qt::LeftButton);
    QTest::mouseRelease(authorize, Qt::LeftButton);
    QApplication::sendEvent(authorize, &held);
    press("Refuse Network");
    ASSERT_TRUE(untilDone("refuse " + network));
    EXPECT_EQ(control().deeds().count("authorize " + network), 1);
}

TEST(ThePlaceOfSystemSettings, LeavesRoomForTheApplicationOnTheLeftWhereThereIsAny) {
    const QSize size{564, 460};
    EXPECT_EQ(settings::placeFor(size, {0, 0, 1280, 800}), QPoint(598, 170));
    EXPECT_EQ(settings::placeFor(size, {0, 0, 1024, 768}), QPoint(460, 154)); // the application's is 450 wide
    EXPECT_EQ(settings::placeFor(size, {0, 30, 800, 450}), QPoint(236, 30));
    EXPECT_EQ(settings::placeFor(size, {10, 10, 500, 400}), QPoint(10, 10));
}

TEST_F(SystemSettings, FitsASmallScreenWithTheAnswersToAQuestion) {
    control().showRequests({question(network), question(camera, {}, 2)});
    open(copies("enabled", "enabled"));
    ASSERT_TRUE(untilShown("Authorize Network"));
    EXPECT_TRUE(QRect(0, 0, 800, 480).contains(QRect{{}, window().size()}));
    window().resize(window().minimumSize());
    ASSERT_TRUE(until([&] { return window().height() == window().minimumHeight(); }));
    EXPECT_FALSE(reachesBeyond("Authorize Network"));
}

TEST_F(SystemSettings, CutsNothingOffHoweverNarrowItIsMade) {
    open(copies("waiting", "enabled") << removedNetwork());
    window().resize(window().minimumSize());
    ASSERT_TRUE(until([&] { return window().height() == window().minimumHeight(); }));
    EXPECT_FALSE(reachesBeyond("Allow Camera"));
    EXPECT_FALSE(reachesBeyond("Enable Network"));
}

TEST_F(SystemSettings, ShowsTheIdentifierOfADriverInFullAtItsFirstSize) {
    open(copies({}, "waiting"));
    const auto& identifier = labelWith(network);
    EXPECT_GE(identifier.width(), identifier.sizeHint().width());
}

TEST_F(SystemSettings, CutsNoControlOffHoweverLongAVersionIs) {
    const QString version(400, u'1');
    open({copyIn("waiting", camera, "2.1", version)});
    EXPECT_LT(labelWith(version).minimumSizeHint().width(), 100); // it gives way
    EXPECT_TRUE(says("2.1/" + version));
}

TEST_F(SystemSettings, WrapsALongQuestion) {
    control().showRequests({question(network, QString{"A Long Name "}.repeated(20))});
    open();
    ASSERT_TRUE(untilShown("Authorize " + network));
    const auto& sentence = labelWith("A Long Name");
    EXPECT_GT(sentence.heightForWidth(340), 3 * sentence.fontMetrics().height());
}

TEST_F(SystemSettings, DropsAnswersThatComeAfterItIsClosed) {
    open();
    emit control().Changed();
    ASSERT_TRUE(untilAsked("ListCopies", 2));
    close();
    ::tests::handleEvents();
}

TEST_F(SystemSettings, EndsBySigtermWhileAQuestionIsOpenAndSaysNothing) {
    control().showRequests({question("x")});
    Program program{SYSTEM_SETTINGS, {}, bus().environment()};
    ASSERT_TRUE(untilAsked("ListRequests", 1));
    ASSERT_TRUE(program.signal(SIGTERM));
    const Outcome outcome = program.outcome();
    EXPECT_EQ(outcome.code, -1) << "no status of its own";
    EXPECT_EQ(outcome.errors, "");
}

} // namespace
} // namespace simulator::tests
