#include "tests/support/QtTesting.h"

#include "tests/simulator/SystemSettings/ShownWindow.h"
#include "tests/simulator/support/Program.h"
#include "tests/simulator/support/ScriptedControl.h"
#include "tests/support/PrivateBus.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolTip>
#include <QtTest>

#include <algorithm>
#include <array>
#include <csignal>
#include <optional>
#include <set>
#include <string>

namespace simulator::tests {

namespace {

const QString camera{"com.kelvra.ip-camera.cmio"};
const QString network{"com.kelvra.driverkit.usb-to-poe"};

/// The camera and the network driver, each in a condition or, if that is empty, not there.
QList<CopyEntry> copies(const QString& ofCamera, const QString& ofNetwork = {}) {
    QList all{copyIn(ofCamera, camera), copyIn(ofNetwork, network)};
    all[0].number = 1;
    all[1].number = 2;
    all.removeIf([](const CopyEntry& copy) { return copy.condition.isEmpty(); });
    return all;
}

/// An older network driver, with which nothing can be done.
CopyEntry removedNetwork() {
    auto copy = copyIn("uninstalling", network, "2.0", "2004");
    copy.number = 3;
    return copy;
}

RequestEntry question(const QString& identifier, const QString& application = "Driver Manager", qlonglong number = 1) {
    return {number, {}, {}, "/Applications/" + application + ".app", "deactivation", identifier, "authorization", 0};
}

QColor colorAt(QWidget& widget, const QPoint& place) {
    return widget.grab().toImage().pixelColor(place);
}

/// The window in front of a service that answers what the test says, on a bus of their own.
class SystemSettings : public testing::Test {
protected:
    ScriptedControl& control() { return control_; }
    ::tests::PrivateBus& bus() { return bus_; }
    ShownWindow& shown() { return *shown_; }
    settings::SettingsWindow& window() { return shown_->window(); }

    /// Shows the window, and waits until it shows what the service listed.
    void open(const QList<CopyEntry>& all = {}) {
        control().show(all);
        shown_.emplace(bus_.connect());
        ASSERT_TRUE(untilSaid("Camera Extensions"));
    }

    /// The same, and waits until an administrator is asked about the network driver.
    void openWithQuestion() {
        control().showRequests({question(network)});
        open(copies("enabled", "enabled"));
        ASSERT_TRUE(untilShown("Authorize Network"));
    }

    void close() { shown_.reset(); }

    QWidget* named(const QString& name) { return shown_->named(name); }
    bool shows(const QString& name) { return shown_->shows(name); }
    QStringList texts() { return shown_->texts(); }
    bool says(const QString& text) { return shown_->says(text); }
    QString focused() { return shown_->focused(); }
    void press(const QString& name) { shown_->press(name); }
    void click(const QString& name) { QTest::mouseClick(named(name), Qt::LeftButton); }
    static void key(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    [[nodiscard]] bool untilShown(const QString& name) { return shown_->untilShown(name); }
    [[nodiscard]] bool untilSaid(const QString& text) { return shown_->untilSaid(text); }
    [[nodiscard]] bool untilDone(const QString& deed) {
        return until([this, &deed] { return control().deeds().contains(deed); });
    }
    [[nodiscard]] bool untilAsked(const QString& list, int times) {
        return until([this, &list, times] { return control().timesAsked(list) == times; });
    }

    QLabel& labelWith(const QString& text) {
        const auto labels = window().findChildren<QLabel*>();
        return **std::find_if(labels.begin(), labels.end(),
                              [&text](const QLabel* label) { return label->text().contains(text); });
    }

    /// How far the right edge of what is seen of a widget is from that of the window.
    int roomBeside(const QWidget& widget, int margin = 0) {
        return window().width() - widget.mapTo(&window(), QPoint{widget.width(), 0}).x() + margin;
    }

    /// That of each card and notice that is shown, and of the button Restart.
    std::set<int> roomsBeside() {
        std::set<int> rooms{roomBeside(*named("Restart"), settings::ringMargin)};
        for (const auto* frame : window().findChildren<QFrame*>())
            if (frame->isVisible() && QStringList{"card", "notice"}.contains(frame->property("role")))
                rooms.insert(roomBeside(*frame));
        return rooms;
    }

    /// Whether the control is cut off at the window's right or lower edge.
    bool reachesBeyond(const QString& name) {
        const auto* control = named(name);
        const auto corner = control->mapTo(&window(), control->rect().bottomRight());
        return corner.x() > window().width() - 24 || corner.y() >= window().height();
    }

    /// The names that Tab gives keyboard focus, one after the other.
    QStringList walk(int steps) {
        QStringList names;
        for (; steps > 0; --steps) {
            key(Qt::Key_Tab);
            names += focused();
        }
        return names;
    }

private:
    OffscreenApplication application_;
    ::tests::PrivateBus bus_;
    ScriptedControl control_{bus_.connect()};
    std::optional<ShownWindow> shown_;
};

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

TEST_F(SystemSettings, OffersAllowAndDenyForWhatWaitsAndASwitchForWhatWasApproved) {
    open(copies("waiting", "enabled") << removedNetwork());
    QStringList offered;
    for (const auto* button : window().findChild<QScrollArea*>()->findChildren<QAbstractButton*>())
        if (button->isVisible()) offered += button->accessibleName();
    EXPECT_EQ(offered, (QStringList{"Deny Camera", "Allow Camera", "Enable Network"}));
}

TEST_F(SystemSettings, ShowsByColorsHowAnExtensionStands) {
    open(copies("waiting"));
    auto& status = labelWith("Needs approval");
    const auto dot = [&status] { return colorAt(status, {4, status.height() / 2}); };
    const auto leftInSwitch = [this] { return colorAt(*named("Enable Camera"), {12, 14}); };
    EXPECT_EQ(dot(), QColor(224, 124, 0));
    control().show(copies("enabled"));
    ASSERT_TRUE(untilSaid("Enabled"));
    EXPECT_EQ(dot(), QColor(40, 167, 69));
    EXPECT_EQ(leftInSwitch(), QColor(0, 103, 244));
    control().show(copies("disabled"));
    ASSERT_TRUE(untilSaid("Disabled"));
    EXPECT_EQ(dot(), QColor(142, 142, 147));
    EXPECT_EQ(leftInSwitch(), QColor(Qt::white));
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
    shown().press("Enable Network", QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(untilDone("disable " + network));
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(named("Enable Network"))->state().checked);
    EXPECT_EQ(control().deeds().size(), 1);
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

TEST_F(SystemSettings, EndsItsPartsAtOneEdgeWithAScrollBarAndWithout) {
    open(copies("waiting"));
    control().refuse("allow", "NotPermitted", "the profile forbids it");
    press("Allow Camera");
    ASSERT_TRUE(untilSaid("the profile forbids it"));
    const auto* const bar = window().findChild<QScrollArea*>()->verticalScrollBar();
    window().resize(window().width(), 600);
    ASSERT_TRUE(until([bar] { return !bar->isVisible(); }));
    EXPECT_EQ(roomsBeside(), std::set{24});
    window().resize(window().minimumSize());
    ASSERT_TRUE(until([bar] { return bar->isVisible(); }));
    EXPECT_EQ(roomsBeside(), std::set{24});
}

TEST_F(SystemSettings, ShowsWhatItCutsOffInAToolTipThatCanBeRead) {
    const QString version(400, u'1');
    open({copyIn("waiting", camera, "2.1", version)});
    auto& label = labelWith(version);
    label.grab();
    QHelpEvent wish{QEvent::ToolTip, {1, 1}, label.mapToGlobal(QPoint{1, 1})};
    QApplication::sendEvent(&label, &wish);
    ASSERT_EQ(QToolTip::text(), "2.1/" + version);
    const auto windows = QApplication::topLevelWidgets();
    const auto tip = std::find_if(windows.begin(), windows.end(), [](auto* one) { return one->inherits("QTipLabel"); });
    EXPECT_EQ(colorAt(**tip, {3, 3}), QColor(Qt::white));
    EXPECT_EQ((*tip)->palette().color(QPalette::WindowText), QColor(29, 29, 31));
}

TEST_F(SystemSettings, DrawsAFocusRingLikeTheApplications) {
    open(copies({}, "enabled"));
    for (const QString name : {"Enable Network", "Restart"}) {
        auto& control = *named(name);
        const auto ring = [&control] { return colorAt(control, {1, control.height() / 2}); };
        EXPECT_NE(ring(), QColor(0, 103, 244));
        control.setFocus();
        EXPECT_EQ(ring(), QColor(0, 103, 244));
        EXPECT_NE(colorAt(control, {2, control.height() / 2}), QColor(0, 103, 244)) << "the gap";
    }
}

TEST_F(SystemSettings, HasAnIconOfItsOwn) {
    open();
    const auto icon = window().windowIcon().pixmap(32, 32).toImage();
    EXPECT_EQ(icon.pixelColor(16, 9), QColor(Qt::white));
    EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0);
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

TEST_F(SystemSettings, IsReadAndWalkedByTabInTheOrderShownAlsoAfterARowCameBeforeAnother) {
    open(copies("waiting"));
    control().show(QList{copyIn("disabled", "first.cmio")} << copies("waiting", "enabled"));
    ASSERT_TRUE(untilSaid("first.cmio"));
    EXPECT_LT(texts().indexOf("first.cmio"), texts().indexOf(camera));
    EXPECT_EQ(walk(5), (QStringList{"Enable Camera", "Deny Camera", "Allow Camera", "Enable Network", "Restart"}));
}

TEST_F(SystemSettings, SendsKeyboardFocusNowhereElseOnItsWay) {
    open(copies("enabled", "enabled"));
    named("Enable Network")->setFocus();
    QStringList way;
    const auto connection = QObject::connect(qApp, &QApplication::focusChanged, [&] { way += focused(); });
    control().showRequests({question(network)});
    ASSERT_TRUE(untilShown("Authorize Network"));
    control().show(copies("disabled", "enabled"));
    control().showRequests({});
    ASSERT_TRUE(until([this] { return !shows("Authorize Network"); }));
    QObject::disconnect(connection);
    EXPECT_TRUE(named("Restart")->isEnabled());
    EXPECT_EQ(way, (QStringList{"Authorize Network", "Enable Network"}));
}

/// The conditions of the camera and of the network driver.
using Conditions = std::array<QString, 2>;

struct FocusCase {
    std::string name;
    QString focused;
    Conditions before;
    Conditions after;
    QString expected;

    friend void PrintTo(const FocusCase& focusCase, std::ostream* stream) { *stream << focusCase.name; }
};

class TheKeyboardFocusOfSystemSettings : public SystemSettings, public testing::WithParamInterface<FocusCase> {};

TEST_P(TheKeyboardFocusOfSystemSettings, StaysNearWhatIsGone) {
    const auto& [name, focusedBefore, before, after, expected] = GetParam();
    open(copies(before[0], before[1]));
    named(focusedBefore)->setFocus();
    control().show(copies(after[0], after[1]) << removedNetwork());
    ASSERT_TRUE(untilSaid("Removed at restart"));
    EXPECT_EQ(focused(), expected);
}

const FocusCase focusCases[]{
    {"ACopyComes", "Enable Network", {"", "enabled"}, {"waiting", "enabled"}, "Enable Network"},
    {"ASwitchComes", "Allow Camera", {"waiting", "enabled"}, {"enabled", "enabled"}, "Enable Camera"},
    {"ANextIsThere", "Deny Camera", {"waiting", "enabled"}, {"", "enabled"}, "Enable Network"},
    {"OneBeforeIsThere", "Enable Network", {"enabled", "enabled"}, {"enabled", ""}, "Enable Camera"},
    {"NothingIsLeft", "Enable Camera", {"enabled", ""}, {"", ""}, ""},
    {"ItIsOnRestart", "Restart", {"enabled", ""}, {"enabled", "enabled"}, "Restart"},
};

INSTANTIATE_TEST_SUITE_P(If, TheKeyboardFocusOfSystemSettings, testing::ValuesIn(focusCases),
                         [](const auto& focusCase) { return focusCase.param.name; });

} // namespace
} // namespace simulator::tests
