#include "tests/platform/linux/window/WindowTest.h"

#include "platform/linux/SceneControl.h"

#include <QKeyEvent>
#include <QTest>

namespace platform {
namespace {

constexpr QPoint inside{350, 100};
constexpr QPoint outside{100, 100};

class AButton : public WindowTest {
protected:
    AButton() { show({press(counted_)}); }

    static ui::SceneNode press(int& count) {
        return button(inCard(0, 0), {300, 85, 90, 30}, "Press", [&count] { ++count; });
    }
    /// A held key, as the keyboard repeats it.
    static void repeatKey(QWidget* widget, const Qt::Key key) {
        QKeyEvent press{QEvent::KeyPress, key, Qt::NoModifier, {}, true};
        QCoreApplication::sendEvent(widget, &press);
        QKeyEvent release{QEvent::KeyRelease, key, Qt::NoModifier, {}, true};
        QCoreApplication::sendEvent(widget, &release);
    }

    int counted_ = 0;
};

TEST_F(AButton, CountsAPressWhenItIsReleasedInside) {
    pressMouse(inside);
    EXPECT_EQ(counted_, 0);
    releaseMouse(inside);
    EXPECT_EQ(counted_, 1);
}

TEST_F(AButton, DoesNotCountAPressThatIsReleasedOutside) {
    pressMouse(inside);
    moveMouse(outside);
    releaseMouse(outside);
    EXPECT_EQ(counted_, 0);
}

TEST_F(AButton, DoesNotCountAPressThatBeganOutside) {
    pressMouse(outside);
    moveMouse(inside);
    releaseMouse(inside);
    EXPECT_EQ(counted_, 0);
}

TEST_F(AButton, CountsAPressThatLeftAndCameBack) {
    pressMouse(inside);
    moveMouse(outside);
    moveMouse(inside);
    releaseMouse(inside);
    EXPECT_EQ(counted_, 1);
}

TEST_F(AButton, HeedsTheLeftMouseButtonAlone) {
    click(inside, Qt::RightButton);
    click(inside, Qt::MiddleButton);
    EXPECT_EQ(counted_, 0);
}

TEST_F(AButton, CountsTheSecondPressOfADoubleClickToo) {
    QTest::mouseDClick(window_.windowHandle(), Qt::LeftButton, {}, inside);
    EXPECT_EQ(counted_, 2);
}

TEST_F(AButton, IsPressedBySpaceWhenTheKeyIsReleased) {
    key(Qt::Key_Tab);
    pressKey(Qt::Key_Space);
    EXPECT_EQ(counted_, 0);
    releaseKey(Qt::Key_Space);
    EXPECT_EQ(counted_, 1);
}

TEST_F(AButton, IsPressedByReturnAndByEnter) {
    key(Qt::Key_Tab);
    key(Qt::Key_Return);
    EXPECT_EQ(counted_, 1);
    key(Qt::Key_Enter);
    EXPECT_EQ(counted_, 2);
}

TEST_F(AButton, IsPressedOnceByAKeyThatIsHeld) {
    key(Qt::Key_Tab);
    QWidget* const widget = control("Press");
    pressKey(Qt::Key_Return);
    repeatKey(widget, Qt::Key_Return);
    releaseKey(Qt::Key_Return);
    pressKey(Qt::Key_Space);
    repeatKey(widget, Qt::Key_Space);
    releaseKey(Qt::Key_Space);
    EXPECT_EQ(counted_, 2);
}

TEST_F(AButton, LooksPressedAsItDoesAtRest) {
    const QImage before = picture();
    pressMouse(inside);
    EXPECT_EQ(picture(), before);
    releaseMouse(inside);
}

TEST_F(AButton, KeepsTheArrowAsItsCursor) {
    EXPECT_EQ(control("Press")->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(AButton, TakesTheHandlerOfEachRebuildThoughNothingVisibleChanged) {
    int later = 0;
    show({press(later)});
    click(inside);
    EXPECT_EQ(counted_, 0);
    EXPECT_EQ(later, 1);
}

TEST_F(AButton, IsTheSameControlFromSceneToScene) {
    const QWidget* const before = control("Press");
    show({button(inCard(0, 0), {290, 85, 100, 30}, "Other name", [] {})});
    EXPECT_EQ(control("Other name"), before);
}

TEST_F(AButton, RunsTheLatestHandlerForAPressUnderWay) {
    int later = 0;
    pressMouse(inside);
    show({press(later)});
    releaseMouse(inside);
    EXPECT_EQ(later, 1);
}

TEST_F(AButton, CancelsAPressUnderWayWhenItsPlaceIsGone) {
    int other = 0;
    pressMouse(inside);
    show({button(inCard(1, 0), {300, 85, 90, 30}, "Other", [&] { ++other; })});
    releaseMouse(inside);
    EXPECT_EQ(counted_, 0);
    EXPECT_EQ(other, 0);
}

TEST_F(AButton, CancelsASpaceUnderWayWhenItsPlaceIsGone) {
    int other = 0;
    key(Qt::Key_Tab);
    pressKey(Qt::Key_Space);
    show({button(inCard(0, 1), {300, 85, 90, 30}, "Other", [&] { ++other; })});
    EXPECT_EQ(focused(), "Other");
    releaseKey(Qt::Key_Space);
    EXPECT_EQ(counted_, 0);
    EXPECT_EQ(other, 0);
}

TEST_F(AButton, MayTakeItselfAwayInItsHandler) {
    int finished = 0;
    const auto all = std::make_shared<std::vector<int>>(1000, 1);
    show({button(inCard(0, 0), {300, 85, 90, 30}, "Press", [&, all] {
        window_.present(scene({}));
        finished = static_cast<int>(all->size());
    })});
    click(inside);
    EXPECT_EQ(finished, 1000);
    EXPECT_EQ(control("Press"), nullptr);
}

TEST_F(AButton, MayCloseTheWindowInItsHandler) {
    show({button(inCard(0, 0), {300, 85, 90, 30}, "Press", [&] { window_.close(); })});
    click(inside);
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(AButton, WithoutAHandlerDoesNothing) {
    show({button(inCard(0, 0), {300, 85, 90, 30}, "Press", nullptr)});
    click(inside);
    EXPECT_EQ(counted_, 0);
}

} // namespace
} // namespace platform
