#include "tests/simulator/SystemSettings/SettingsWindowTest.h"

#include <QScrollArea>
#include <QScrollBar>
#include <QToolTip>

// What is seen, to the pixel.

namespace simulator::tests {

namespace {

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

} // namespace

} // namespace simulator::tests
