// System Settings without a pointer: what has keyboard focus, where it goes, and what the keys do.

#include "tests/simulator/support/Printing.h"

#include "tests/simulator/SystemSettings/SystemSettingsTest.h"

#include <QAbstractButton>
#include <QtTest>

namespace simulator::tests {

TEST_F(SystemSettings, IsWalkedByTabInReadingOrder) {
    control().show({waitingCamera(), numbered(3, copyIn("disabled", "other.cmio")), enabledNetwork()});
    open();
    QStringList walk;
    for (auto step = 0; step < 5; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        walk += focused();
    }
    EXPECT_EQ(walk, (QStringList{"Deny Camera", "Allow Camera", "Enable Camera", "Enable Network", "Restart"}));
}

TEST_F(SystemSettings, IsWalkedInReadingOrderAlsoAfterARowCameInBetween) {
    control().show({enabledNetwork()});
    open();
    control().show({waitingCamera(), enabledNetwork()});
    ASSERT_TRUE(untilShown("Allow Camera"));
    QStringList walk;
    for (auto step = 0; step < 4; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        walk += focused();
    }
    EXPECT_EQ(walk, (QStringList{"Deny Camera", "Allow Camera", "Enable Network", "Restart"}));
}

TEST_F(SystemSettings, IsPressedBySpaceAndByReturn) {
    control().show({waitingCamera(), enabledNetwork()});
    open();
    named("Deny Camera")->setFocus();
    QTest::keyClick(named("Deny Camera"), Qt::Key_Space);
    EXPECT_TRUE(untilDone("Deny com.kelvra.ip-camera.cmio"));
    QTest::keyClick(named("Allow Camera"), Qt::Key_Return);
    EXPECT_TRUE(untilDone("Allow com.kelvra.ip-camera.cmio"));
    QTest::keyClick(named("Enable Network"), Qt::Key_Return);
    EXPECT_TRUE(untilDone("Disable com.kelvra.driverkit.usb-to-poe"));
}

TEST_F(SystemSettings, HasNoMnemonics) {
    control().show({waitingCamera(), enabledNetwork()});
    open();
    for (const auto* button : window().findChildren<QAbstractButton*>())
        EXPECT_TRUE(button->shortcut().isEmpty()) << button->text().toStdString();
}

TEST_F(SystemSettings, KeepsKeyboardFocusOnTheSameCopyThroughChanges) {
    control().show({enabledNetwork()});
    open();
    named("Enable Network")->setFocus();
    control().show({waitingCamera(), enabledNetwork()});
    ASSERT_TRUE(untilShown("Allow Camera"));
    EXPECT_EQ(focused(), "Enable Network");
}

TEST_F(SystemSettings, MovesKeyboardFocusFromAllowToTheSwitchThatTakesItsPlace) {
    control().show({waitingCamera(), enabledNetwork()});
    open();
    named("Allow Camera")->setFocus();
    control().show({enabledCamera(), enabledNetwork()});
    ASSERT_TRUE(untilShown("Enable Camera"));
    EXPECT_EQ(focused(), "Enable Camera");
}

TEST_F(SystemSettings, MovesKeyboardFocusToTheNextExtensionWhenACopyGoes) {
    control().show({waitingCamera(), enabledNetwork()});
    open();
    named("Deny Camera")->setFocus();
    control().show({enabledNetwork()});
    ASSERT_TRUE(until([this] { return !shows("Deny Camera"); }));
    EXPECT_EQ(focused(), "Enable Network");
}

TEST_F(SystemSettings, MovesKeyboardFocusToTheExtensionBeforeRatherThanToRestart) {
    control().show({enabledCamera(), enabledNetwork()});
    open();
    named("Enable Network")->setFocus();
    control().show({enabledCamera(), numbered(2, copyIn("uninstalling", network))});
    ASSERT_TRUE(until([this] { return !shows("Enable Network"); }));
    EXPECT_EQ(focused(), "Enable Camera");
    control().show({});
    ASSERT_TRUE(until([this] { return !shows("Enable Camera"); }));
    EXPECT_NE(focused(), "Restart");
}

TEST_F(SystemSettings, KeepsKeyboardFocusOnRestartThroughChanges) {
    control().show({enabledCamera()});
    open();
    named("Enable Camera")->setFocus();
    named("Restart")->setFocus();
    control().show({enabledCamera(), enabledNetwork()});
    ASSERT_TRUE(untilShown("Enable Network"));
    EXPECT_EQ(focused(), "Restart");
}

TEST_F(SystemSettings, SendsKeyboardFocusNowhereElseOnItsWay) {
    control().show({enabledCamera(), enabledNetwork()});
    open();
    named("Enable Network")->setFocus();
    QStringList way;
    const auto connection = QObject::connect(qApp, &QApplication::focusChanged, [&] { way += focused(); });
    control().showRequests({question(network)});
    ASSERT_TRUE(untilShown("Authorize Network"));
    control().show({enabledCamera(), numbered(2, copyIn("uninstalling", network))});
    control().showRequests({});
    ASSERT_TRUE(until([this] { return !shows("Authorize Network"); }));
    QObject::disconnect(connection);
    EXPECT_EQ(way, (QStringList{"Authorize Network", "Enable Camera"}));
}

TEST_F(SystemSettings, KeepsTabWithinTheQuestion) {
    control().show({enabledNetwork()});
    control().showRequests({question(network)});
    open();
    ASSERT_TRUE(untilShown("Authorize Network"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(focused(), "Refuse Network");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(focused(), "Authorize Network");
}

} // namespace simulator::tests
