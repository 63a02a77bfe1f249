#include "tests/platform/linux/window/WindowTest.h"

#include "platform/linux/SceneControl.h"

namespace platform {
namespace {

constexpr QRect aroundFirst{290, 75, 110, 50};

/// Two cards: each with a button and a menu.
class KeyboardFocus : public WindowTest {
protected:
    KeyboardFocus() { show(cards()); }

    static std::vector<ui::SceneNode> cards() { return {firstButton(), firstMenu(), secondButton(), secondMenu()}; }
    static ui::SceneNode firstButton() {
        return button(inCard(0, 0), {300, 85, 80, 30}, "First", [] {});
    }
    static ui::SceneNode firstMenu() { return menu(inCard(0, 1), {391, 93}, "First menu", {}); }
    static ui::SceneNode secondButton() {
        return button(inCard(1, 0), {300, 155, 80, 30}, "Second", [] {});
    }
    static ui::SceneNode secondMenu() { return menu(inCard(1, 1), {391, 163}, "Second menu", {}); }

    void focusBy(const int tabs) {
        for (int i = 0; i < tabs; ++i)
            key(Qt::Key_Tab);
    }
};

TEST_F(KeyboardFocus, MovesInReadingOrderAndBackwardWithShift) {
    for (const char* expected : {"First", "First menu", "Second", "Second menu", "First"}) {
        key(Qt::Key_Tab);
        EXPECT_EQ(focused(), expected);
    }
    for (const char* expected : {"Second menu", "Second"}) {
        key(Qt::Key_Backtab, Qt::ShiftModifier);
        EXPECT_EQ(focused(), expected);
    }
}

TEST_F(KeyboardFocus, FollowsTheReadingOrderOfANewScene) {
    show({firstMenu(), secondButton()});
    show(cards());
    for (const char* expected : {"First", "First menu", "Second", "Second menu"}) {
        key(Qt::Key_Tab);
        EXPECT_EQ(focused(), expected);
    }
}

TEST_F(KeyboardFocus, IsNotMovedByArrows) {
    focusBy(1);
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    EXPECT_EQ(focused(), "First");
}

TEST_F(KeyboardFocus, IsNotTakenByAClick) {
    focusBy(1);
    click({340, 170});
    EXPECT_EQ(focused(), "First");
    click({20, 200});
    EXPECT_EQ(focused(), "First");
}

TEST_F(KeyboardFocus, StaysAtItsPlaceEvenIfTheKindOfControlChanges) {
    focusBy(1);
    show({menu(inCard(0, 0), {391, 93}, "Now a menu", {})});
    EXPECT_EQ(focused(), "Now a menu");
}

TEST_F(KeyboardFocus, IsOnTheWindowWhileThereIsNoControl) {
    focusBy(1);
    show({});
    EXPECT_EQ(QApplication::focusWidget(), &window_);
    show(cards());
    EXPECT_EQ(focused(), "");
    focusBy(1);
    EXPECT_EQ(focused(), "First");
}

TEST_F(KeyboardFocus, FollowsASceneChangeInAnInactiveWindow) {
    focusBy(1);
    QWidget other;
    other.show();
    other.activateWindow();
    QApplication::setActiveWindow(&other);
    show({firstMenu(), secondButton()});
    QApplication::setActiveWindow(&window_);
    EXPECT_EQ(focused(), "First menu");
}

class TheFocusRing : public KeyboardFocus {
protected:
    const QImage atRest_ = picture();
};

TEST_F(TheFocusRing, IsShownAroundAControlReachedByKeyboard) {
    focusBy(1);
    EXPECT_TRUE(differs(atRest_, aroundFirst));
    EXPECT_FALSE(differs(atRest_, {305, 90, 70, 20}));
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_FALSE(differs(atRest_, aroundFirst));
}

TEST_F(TheFocusRing, FollowsTheCapsule) {
    focusBy(1);
    const QImage now = picture();
    const QColor ring = now.pixelColor(340, 83);
    EXPECT_EQ(ring, now.pixelColor(340, 82));
    EXPECT_EQ(ring, now.pixelColor(340, 116));
    EXPECT_EQ(ring, now.pixelColor(298, 100));
    EXPECT_EQ(ring, now.pixelColor(381, 100));
    EXPECT_EQ(now.pixelColor(298, 83), atRest_.pixelColor(298, 83));
    EXPECT_EQ(now.pixelColor(340, 84), atRest_.pixelColor(340, 84));
}

TEST_F(TheFocusRing, IsHiddenAfterAClick) {
    click({340, 100});
    EXPECT_FALSE(differs(atRest_, window_.rect()));
}

TEST_F(TheFocusRing, IsHiddenIfAssistiveTechnologySetTheFocus) {
    control("First")->setFocus(Qt::OtherFocusReason);
    EXPECT_FALSE(differs(atRest_, window_.rect()));
}

TEST_F(TheFocusRing, IsShownWhileAMenuIsOpen) {
    focusBy(2);
    const QImage ring = picture();
    key(Qt::Key_Down);
    ASSERT_NE(openMenu(), nullptr);
    key(Qt::Key_Down);
    EXPECT_EQ(picture(), ring);
}

TEST_F(TheFocusRing, IsHiddenInAnInactiveWindow) {
    focusBy(1);
    QWidget other;
    other.show();
    QApplication::setActiveWindow(&other);
    EXPECT_FALSE(differs(atRest_, window_.rect()));
}

class ACanvas : public WindowTest {};

TEST_F(ACanvas, ReplacesThePreviousScene) {
    show({{ui::Fill{{10, 10, 20, 20}, ui::ShapeKind::rectangle, ui::Color::black}}});
    EXPECT_EQ(picture().pixelColor(15, 15), QColor(Qt::black));
    show({{ui::Fill{{40, 10, 20, 20}, ui::ShapeKind::rectangle, ui::Color::black}}});
    EXPECT_EQ(picture().pixelColor(15, 15), QColor(236, 236, 236));
    EXPECT_EQ(picture().pixelColor(45, 15), QColor(Qt::black));
}

/// Counts how often the window's content is painted.
class Paintings : public QObject {
public:
    explicit Paintings(QWidget& window) {
        for (QWidget* child : window.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            child->installEventFilter(this);
    }
    int count() const { return count_; }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++count_;
        return false;
    }

private:
    int count_ = 0;
};

TEST_F(ACanvas, IsPaintedAgainOnlyIfSomethingVisibleChanged) {
    show({text({10, 10}, "One")});
    const Paintings paintings{window_};
    show({text({10, 10}, "One")});
    EXPECT_EQ(paintings.count(), 0);
    show({text({10, 10}, "Two")});
    EXPECT_EQ(paintings.count(), 1);
}

} // namespace
} // namespace platform
