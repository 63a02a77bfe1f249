#include "tests/simulator/support/Printing.h"

#include "tests/simulator/SystemSettings/SystemSettingsTest.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QLayout>
#include <QScrollArea>
#include <QtTest>

#include <algorithm>

namespace simulator::tests {

namespace {

/// The least width at which everything in the widget has its place, also where that is not laid out yet.
int leastWidthOf(QWidget& widget) {
    for (auto* child : widget.findChildren<QWidget*>())
        child->updateGeometry();
    for (auto* layout : widget.findChildren<QLayout*>())
        layout->invalidate();
    return widget.minimumSizeHint().width();
}

bool isOn(QWidget* toggle) {
    return QAccessible::queryAccessibleInterface(toggle)->state().checked;
}

} // namespace

TEST_F(SystemSettings, HasATitleAndAHeading) {
    open();
    EXPECT_EQ(window().windowTitle(), "System Settings");
    EXPECT_TRUE(says("Privacy & Security"));
}

TEST_F(SystemSettings, SaysWhatIsThereAndHowItStands) {
    control().show({waitingCamera(), enabledNetwork(), numbered(3, copyIn("uninstalling", network, "2.0", "2004"))});
    open();
    EXPECT_EQ(texts(),
              (QStringList{"Privacy & Security", "Camera Extensions", "Camera", "2.1/2105", camera,
                           "Waiting for approval", "Driver Extensions", "Network", "2.1/2105", network, "Enabled",
                           "Network", "2.0/2004", network, "Removed at restart", "A restart ends every application."}));
}

TEST_F(SystemSettings, SaysSoIfNothingIsInstalled) {
    open();
    EXPECT_TRUE(says("No camera extension is installed."));
    EXPECT_TRUE(says("No driver is installed."));
    EXPECT_FALSE(says("Other Extensions"));
}

TEST_F(SystemSettings, ShowsATextAsItIsWhateverItHolds) {
    auto copy = waitingCamera();
    copy.name = "<b>Bold</b> & <img src=x>";
    control().show({copy});
    open();
    EXPECT_TRUE(says("<b>Bold</b> & <img src=x>"));
    EXPECT_TRUE(shows("Allow <b>Bold</b> & <img src=x>"));
    for (const auto* label : window().findChildren<QLabel*>())
        EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->text().toStdString();
}

TEST_F(SystemSettings, OffersAllowAndDenyForWhatWaitsAndASwitchForWhatWasApproved) {
    control().show({waitingCamera(), enabledNetwork(), numbered(3, copyIn("uninstalling", network))});
    open();
    EXPECT_TRUE(shows("Allow Camera"));
    EXPECT_TRUE(shows("Deny Camera"));
    EXPECT_FALSE(shows("Enable Camera"));
    EXPECT_TRUE(shows("Enable Network"));
    EXPECT_FALSE(shows("Allow Network"));
    EXPECT_FALSE(shows("Deny Network"));
}

TEST_F(SystemSettings, GivesEachControlARoleANameAndAnAction) {
    control().show({waitingCamera(), enabledNetwork()});
    open();
    const auto roleOf = [this](const QString& name) {
        return QAccessible::queryAccessibleInterface(named(name))->role();
    };
    EXPECT_EQ(roleOf("Allow Camera"), QAccessible::Button);
    EXPECT_EQ(roleOf("Deny Camera"), QAccessible::Button);
    EXPECT_EQ(roleOf("Enable Network"), QAccessible::CheckBox);
    EXPECT_EQ(roleOf("Restart"), QAccessible::Button);
    for (const auto* name : {"Allow Camera", "Deny Camera", "Enable Network", "Restart"})
        EXPECT_FALSE(QAccessible::queryAccessibleInterface(named(name))->actionInterface()->actionNames().isEmpty());
}

TEST_F(SystemSettings, TellsItsWindowItsListsTheirItemsAndItsQuestionAsWhatTheyAre) {
    control().show({waitingCamera(), numbered(3, copyIn("uninstalling", camera, "2.0", "2004"))});
    control().showRequests({question(camera)});
    open();
    ASSERT_TRUE(untilShown("Authorize Camera"));
    const auto above = [this](const QString& name, int steps) {
        auto* interface = QAccessible::queryAccessibleInterface(named(name));
        for (; steps > 0; --steps)
            interface = interface->parent();
        return std::pair{interface->role(), interface->text(QAccessible::Name)};
    };
    EXPECT_EQ(above("Allow Camera", 1),
              std::pair(QAccessible::ListItem, QString{"Camera 2.1/2105, Waiting for approval"}));
    EXPECT_EQ(above("Allow Camera", 2), std::pair(QAccessible::List, QString{"Camera Extensions"}));
    EXPECT_EQ(above("Authorize Camera", 1), std::pair(QAccessible::Dialog, QString{"An administrator has to agree"}));
    EXPECT_EQ(above("Authorize Camera", 3), std::pair(QAccessible::Window, QString{"System Settings"}));
}

TEST_F(SystemSettings, AllowsAndDeniesAndRestartsAtAPressOfTheMouse) {
    control().show({waitingCamera()});
    open();
    QTest::mouseClick(named("Allow Camera"), Qt::LeftButton);
    EXPECT_TRUE(untilDone("Allow com.kelvra.ip-camera.cmio"));
    QTest::mouseClick(named("Deny Camera"), Qt::LeftButton);
    EXPECT_TRUE(untilDone("Deny com.kelvra.ip-camera.cmio"));
    QTest::mouseClick(named("Restart"), Qt::LeftButton);
    EXPECT_TRUE(untilDone("Restart"));
}

TEST_F(SystemSettings, AllowsAtTheActionOfAssistiveTechnology) {
    control().show({waitingCamera()});
    open();
    press("Allow Camera");
    EXPECT_TRUE(untilDone("Allow com.kelvra.ip-camera.cmio"));
}

TEST_F(SystemSettings, IsReadInTheOrderInWhichItIsShown) {
    const auto first = numbered(3, copyIn("enabled", "a.cmio"));
    control().show({waitingCamera()});
    open();
    control().show({first, waitingCamera()});
    ASSERT_TRUE(untilSaid("a.cmio"));
    EXPECT_LT(texts().indexOf("a.cmio"), texts().indexOf(camera));
}

TEST_F(SystemSettings, FollowsEachChangeByItself) {
    open();
    control().show({waitingCamera()});
    EXPECT_TRUE(untilShown("Allow Camera"));
    control().show({enabledCamera()});
    EXPECT_TRUE(untilShown("Enable Camera"));
    EXPECT_FALSE(shows("Allow Camera"));
    control().show({});
    EXPECT_TRUE(untilSaid("No camera extension is installed."));
    EXPECT_FALSE(shows("Enable Camera"));
}

TEST_F(SystemSettings, AsksFewTimesForManyChanges) {
    open();
    for (auto change = 0; change < 500; ++change)
        emit control().Changed();
    control().show({waitingCamera()});
    EXPECT_TRUE(untilShown("Allow Camera"));
    EXPECT_LT(control().timesAsked("ListCopies"), 100);
}

TEST_F(SystemSettings, TurnsASwitchOnlyWhenTheServiceSaysSo) {
    control().show({enabledNetwork()});
    open();
    QTest::mouseClick(named("Enable Network"), Qt::LeftButton);
    ASSERT_TRUE(untilDone("Disable com.kelvra.driverkit.usb-to-poe"));
    EXPECT_TRUE(isOn(named("Enable Network")));
    control().show({numbered(2, copyIn("disabled", network))});
    ASSERT_TRUE(untilSaid("Disabled"));
    EXPECT_FALSE(isOn(named("Enable Network")));
    QTest::mouseClick(named("Enable Network"), Qt::LeftButton);
    EXPECT_TRUE(untilDone("Enable com.kelvra.driverkit.usb-to-poe"));
}

TEST_F(SystemSettings, SaysWhyTheServiceRefuses) {
    control().show({waitingCamera()});
    control().refuse("Allow", "NotPermitted", "the profile forbids it");
    open();
    QTest::mouseClick(named("Allow Camera"), Qt::LeftButton);
    EXPECT_TRUE(untilSaid("the profile forbids it"));
    EXPECT_FALSE(shows("Start the simulated Mac"));
}

TEST_F(SystemSettings, SaysNothingIfSomeoneElseWasQuicker) {
    control().show({waitingCamera()});
    control().refuse("Allow", "NothingWaiting", "nothing waits");
    open();
    const auto asked = control().timesAsked("ListCopies");
    QTest::mouseClick(named("Allow Camera"), Qt::LeftButton);
    ASSERT_TRUE(until([this, asked] { return control().timesAsked("ListCopies") > asked; }));
    EXPECT_FALSE(says("nothing waits"));
}

TEST_F(SystemSettings, SaysSoIfTheServiceIsNotThere) {
    openWithoutService();
    EXPECT_TRUE(shows("Start the simulated Mac"));
    EXPECT_FALSE(says("Camera Extensions"));
    EXPECT_FALSE(named("Restart")->isEnabled());
}

TEST_F(SystemSettings, ShowsTheListsAgainWhenTheServiceIsBack) {
    control().show({waitingCamera()});
    open();
    control().leave();
    ASSERT_TRUE(untilSaid("The simulated Mac is not running."));
    EXPECT_FALSE(shows("Allow Camera"));
    control().comeBack();
    ASSERT_TRUE(untilShown("Allow Camera"));
    EXPECT_FALSE(says("The simulated Mac is not running."));
    EXPECT_TRUE(named("Restart")->isEnabled());
}

TEST_F(SystemSettings, LooksAgainWhenStartIsPressed) {
    openWithoutService();
    QTest::mouseClick(named("Start the simulated Mac"), Qt::LeftButton);
    control().comeBack();
    EXPECT_TRUE(untilSaid("Camera Extensions"));
}

TEST_F(SystemSettings, SaysSoIfTheBusIsGone) {
    open();
    bus().stop();
    EXPECT_TRUE(untilSaid("There is no session bus, so there is no simulated Mac."));
    EXPECT_FALSE(shows("Start the simulated Mac"));
}

TEST_F(SystemSettings, AsksTheAdministratorsQuestionOverEverythingElse) {
    control().show({enabledNetwork()});
    open();
    control().showRequests({question(network)});
    ASSERT_TRUE(untilShown("Authorize Network"));
    EXPECT_TRUE(says("An administrator has to agree"));
    EXPECT_TRUE(says("Driver Manager wants to remove Network."));
    EXPECT_EQ(texts().count(network), 2); // in its row and in the question
    EXPECT_FALSE(named("Enable Network")->isEnabled());
    EXPECT_FALSE(named("Restart")->isEnabled());
    QTest::mouseClick(named("Authorize Network"), Qt::LeftButton);
    EXPECT_TRUE(untilDone("Authorize com.kelvra.driverkit.usb-to-poe"));
}

TEST_F(SystemSettings, TakesTheQuestionAwayWhoeverAnsweredIt) {
    control().show({enabledNetwork()});
    open();
    named("Enable Network")->setFocus();
    control().showRequests({question(network)});
    ASSERT_TRUE(untilShown("Refuse Network"));
    EXPECT_EQ(focused(), "Authorize Network");
    control().showRequests({});
    ASSERT_TRUE(until([this] { return !shows("Refuse Network"); }));
    EXPECT_TRUE(named("Restart")->isEnabled());
    EXPECT_EQ(focused(), "Enable Network");
}

TEST_F(SystemSettings, RefusesAtEscapeAndAtThePressOfRefuse) {
    control().show({enabledNetwork()});
    control().showRequests({question(network)});
    open();
    ASSERT_TRUE(untilShown("Refuse Network"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(untilDone("Refuse com.kelvra.driverkit.usb-to-poe"));
    control().showRequests({question(camera)});
    ASSERT_TRUE(untilShown("Refuse com.kelvra.ip-camera.cmio"));
    QTest::mouseClick(named("Refuse com.kelvra.ip-camera.cmio"), Qt::LeftButton);
    EXPECT_TRUE(untilDone("Refuse com.kelvra.ip-camera.cmio"));
}

TEST_F(SystemSettings, TakesADoubleClickForOneAnswer) {
    control().show({enabledNetwork()});
    control().showRequests({question(network)});
    open();
    ASSERT_TRUE(untilShown("Authorize Network"));
    auto* const authorize = named("Authorize Network");
    const auto middle = authorize->rect().center();
    QMouseEvent again{QEvent::MouseButtonDblClick,
                      middle,
                      authorize->mapToGlobal(middle),
                      Qt::LeftButton,
                      Qt::LeftButton,
                      Qt::NoModifier};
    QTest::mouseClick(authorize, Qt::LeftButton);
    QApplication::sendEvent(authorize, &again);
    QTest::mouseRelease(authorize, Qt::LeftButton);
    press("Refuse Network");
    ASSERT_TRUE(untilDone("Refuse com.kelvra.driverkit.usb-to-poe"));
    EXPECT_EQ(control().deeds().count("Authorize com.kelvra.driverkit.usb-to-poe"), 1);
}

TEST_F(SystemSettings, TakesAKeyThatIsHeldForOneAnswer) {
    control().show({enabledNetwork()});
    control().showRequests({question(network)});
    open();
    ASSERT_TRUE(untilShown("Authorize Network"));
    QKeyEvent again{QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true};
    QTest::keyClick(named("Authorize Network"), Qt::Key_Return);
    QApplication::sendEvent(named("Authorize Network"), &again);
    press("Refuse Network");
    ASSERT_TRUE(untilDone("Refuse com.kelvra.driverkit.usb-to-poe"));
    EXPECT_EQ(control().deeds().count("Authorize com.kelvra.driverkit.usb-to-poe"), 1);
}

TEST_F(SystemSettings, CutsNothingOffHoweverNarrowItIsMade) {
    control().show({waitingCamera(), enabledNetwork(), numbered(3, copyIn("uninstalling", network, "2.0", "2004"))});
    open();
    ASSERT_TRUE(untilShown("Allow Camera"));
    window().resize(window().minimumSize());
    ASSERT_TRUE(until([&] { return window().height() == window().minimumHeight(); }));
    EXPECT_FALSE(reachesBeyond("Allow Camera"));
    EXPECT_FALSE(reachesBeyond("Enable Network"));
}

TEST_F(SystemSettings, CutsNoControlOffHoweverLongAVersionIs) {
    const QString version(200, u'1');
    control().show({numbered(1, copyIn("waiting", camera, version, version)), enabledNetwork()});
    open();
    ASSERT_TRUE(untilShown("Allow Camera"));
    const auto* const scroll = window().findChild<QScrollArea*>();
    EXPECT_LE(leastWidthOf(*scroll->widget()), scroll->viewport()->width());
    EXPECT_TRUE(says(version + u'/' + version));
}

TEST_F(SystemSettings, WrapsALongQuestion) {
    auto asked = question(network);
    asked.application = "/Applications/" + QStringLiteral("A Long Name ").repeated(20) + ".app";
    control().showRequests({asked});
    open();
    ASSERT_TRUE(untilShown("Authorize " + QString{network}));
    const auto labels = window().findChild<settings::AuthorizationSheet*>()->findChildren<QLabel*>();
    const auto sentence = std::find_if(labels.begin(), labels.end(),
                                       [](const QLabel* label) { return label->text().contains("A Long Name"); });
    ASSERT_NE(sentence, labels.end());
    EXPECT_GT((*sentence)->heightForWidth(340), 3 * (*sentence)->fontMetrics().height());
}

TEST_F(SystemSettings, DropsAnswersThatComeAfterItIsClosed) {
    open();
    emit control().Changed();
    ASSERT_TRUE(until([this] { return control().timesAsked("ListCopies") == 2; }));
    close();
    handleEvents();
}

} // namespace simulator::tests
