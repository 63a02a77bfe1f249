#include "platform/linux/SceneControl.h"

#include "platform/linux/Appearance.h"
#include "tests/platform/linux/window/WindowTest.h"

#include <QKeyEvent>
#include <QTest>
#include <QWindow>

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
    /// A repetition of a held key.
    static void repeatKey(QWidget* widget, const Qt::Key key) {
        QKeyEvent press{QEvent::KeyPress, key, Qt::NoModifier, {}, true};
        QCoreApplication::sendEvent(widget, &press);
        QKeyEvent release{QEvent::KeyRelease, key, Qt::NoModifier, {}, true};
        QCoreApplication::sendEvent(widget, &release);
    }

    int counted_ = 0;
};

TEST_F(AButton, CountsAPressThatStartsAndEndsInside) {
    const std::vector<std::pair<std::vector<QPoint>, int>> cases{
        {{inside, inside}, 1}, {{inside, outside}, 0}, {{outside, inside}, 0}, {{inside, outside, inside}, 1}};
    for (const auto& [path, counted] : cases) {
        counted_ = 0;
        pressMouse(path.front());
        EXPECT_EQ(counted_, 0);
        for (const QPoint point : path)
            moveMouse(point);
        releaseMouse(path.back());
        EXPECT_EQ(counted_, counted) << "a path of " << path.size();
    }
}

TEST_F(AButton, ReactsOnlyToTheLeftMouseButton) {
    click(inside, Qt::RightButton);
    click(inside, Qt::MiddleButton);
    EXPECT_EQ(counted_, 0);
}

TEST_F(AButton, CountsBothPressesOfADoubleClick) {
    QTest::mouseDClick(window_.windowHandle(), Qt::LeftButton, {}, inside);
    EXPECT_EQ(counted_, 2);
}

TEST_F(AButton, IsPressedOnceByAKeyThatIsHeld) {
    key(Qt::Key_Tab);
    for (const Qt::Key pressing : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        counted_ = 0;
        pressKey(pressing);
        repeatKey(control("Press"), pressing);
        EXPECT_EQ(counted_, pressing == Qt::Key_Space ? 0 : 1);
        releaseKey(pressing);
        EXPECT_EQ(counted_, 1);
    }
}

TEST_F(AButton, LooksTheSameWhilePressed) {
    const QImage before = picture();
    pressMouse(inside);
    EXPECT_EQ(picture(), before);
    releaseMouse(inside);
}

TEST_F(AButton, HasTheArrowCursor) {
    EXPECT_EQ(control("Press")->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(AButton, RunsTheLatestHandlerAfterAPressInProgress) {
    int later = 0;
    pressMouse(inside);
    show({press(later)});
    releaseMouse(inside);
    EXPECT_EQ(later, 1);
}

TEST_F(AButton, CancelsAPressIfItsPlaceIsGone) {
    int other = 0;
    pressMouse(inside);
    show({button(inCard(1, 0), {300, 85, 90, 30}, "Other", [&] { ++other; })});
    releaseMouse(inside);
    EXPECT_EQ(counted_, 0);
    EXPECT_EQ(other, 0);
}

TEST_F(AButton, CancelsAPressOfSpaceIfItsPlaceIsGone) {
    int other = 0;
    key(Qt::Key_Tab);
    pressKey(Qt::Key_Space);
    show({button(inCard(0, 1), {300, 85, 90, 30}, "Other", [&] { ++other; })});
    EXPECT_EQ(focused(), "Other");
    releaseKey(Qt::Key_Space);
    EXPECT_EQ(counted_, 0);
    EXPECT_EQ(other, 0);
}

TEST_F(AButton, CanRemoveItselfInItsHandler) {
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

TEST_F(AButton, WithoutAHandlerDoesNothing) {
    show({button(inCard(0, 0), {300, 85, 90, 30}, "Press", nullptr)});
    click(inside);
    EXPECT_EQ(counted_, 0);
}

// Menus --------------------------------------------------------------------------------------------------------------

constexpr QPoint onIndicator{396, 101};
constexpr QPoint onGround{20, 200};

class AMenu : public WindowTest {
protected:
    AMenu() { show(content(refreshed_, removed_)); }

    std::vector<ui::SceneNode> content(int& refreshed, int& removed) {
        return {button(inCard(0, 0), {300, 85, 87, 30}, "Button", [this] { ++pressed_; }),
                menu(inCard(0, 1), {391, 93}, "Actions",
                     {item("Refresh", [&refreshed] { ++refreshed; }), item("Q&A <b>", [&removed] { ++removed; })})};
    }
    void focusMenu() {
        key(Qt::Key_Tab);
        key(Qt::Key_Tab);
    }
    void openByKey() {
        focusMenu();
        key(Qt::Key_Down);
    }
    static std::string chosen() {
        const QMenu* menu = openMenu();
        return menu && menu->activeAction() ? menu->activeAction()->text().toStdString() : std::string{};
    }
    static QPoint middleOf(const int item) {
        return openMenu()->actionGeometry(openMenu()->actions().at(item)).center();
    }
    static void clickItem(const int item) {
        QTest::mouseClick(openMenu()->windowHandle(), Qt::LeftButton, {}, middleOf(item));
    }

    int refreshed_ = 0;
    int removed_ = 0;
    int pressed_ = 0;
};

TEST_F(AMenu, OpensOnlyByTheLeftMouseButtonInItsHitArea) {
    click(onIndicator, Qt::RightButton);
    EXPECT_EQ(openMenu(), nullptr);
    click({405, 90});
    EXPECT_NE(openMenu(), nullptr);
}

TEST_F(AMenu, OpensBelowItsIndicator) {
    click(onIndicator);
    const QPoint corner = window_.mapFromGlobal(openMenu()->geometry().topLeft());
    EXPECT_EQ(corner.x(), 391);
    EXPECT_GE(corner.y(), 109);
    EXPECT_LE(corner.y(), 115);
}

TEST_F(AMenu, OpensByUpWithTheLastItemSelected) {
    focusMenu();
    key(Qt::Key_Up);
    EXPECT_EQ(chosen(), "Q&&A <b>");
}

TEST_F(AMenu, SelectsTheItemThatStartsWithTheTypedLetter) {
    openByKey();
    key(Qt::Key_Q);
    EXPECT_EQ(chosen(), "Q&&A <b>");
}

TEST_F(AMenu, HasRoundCornersAndAHighlightInside) {
    openByKey();
    const QImage shown = openMenu()->grab().toImage().convertToFormat(QImage::Format_ARGB32);
    const QRect item = openMenu()->actionGeometry(openMenu()->actions().constFirst());
    EXPECT_EQ(qAlpha(shown.pixel(0, 0)), 0);
    EXPECT_EQ(shown.pixelColor(shown.width() / 2, 2), QColor(Qt::white));
    EXPECT_EQ(shown.pixelColor(2, item.center().y()), QColor(Qt::white));
    EXPECT_EQ(shown.pixelColor(item.center().x(), item.top() + 1), accentColor);
}

TEST_F(AMenu, ShowsTheUnchangedTitleAndTheSymbolOfEachItem) {
    click(onIndicator);
    const auto actions = openMenu()->actions();
    ASSERT_EQ(actions.size(), 2);
    EXPECT_EQ(actions[0]->text(), "Refresh");
    EXPECT_EQ(actions[1]->text(), "Q&&A <b>");
    for (const QAction* action : actions) {
        const QImage icon = action->icon().pixmap(16, 16).toImage();
        EXPECT_EQ(icon, images_.image({"trash", ui::ImageReference::Source::system}, {16, 16}, Qt::black).toImage());
    }
}

TEST_F(AMenu, ShowsTheSameImagesEachTimeItOpensSoThatQtRemembersThemOnce) {
    const auto image = [&] {
        click(onIndicator);
        const QPixmap shown = openMenu()->actions()[0]->icon().pixmap(16, 16);
        clickItem(0);
        return shown.cacheKey();
    };
    const auto first = image();
    EXPECT_EQ(image(), first);
}

TEST_F(AMenu, RunsTheItemThatIsClicked) {
    click(onIndicator);
    clickItem(1);
    EXPECT_EQ(removed_, 1);
    EXPECT_EQ(refreshed_, 0);
    EXPECT_EQ(openMenu(), nullptr);
}

TEST_F(AMenu, RunsTheItemWhereADragEnds) {
    pressMouse(onIndicator);
    QWindow* const menu = openMenu()->windowHandle();
    QTest::mouseMove(menu, middleOf(0) - QPoint{3, 0});
    QTest::mouseMove(menu, middleOf(0));
    QTest::mouseRelease(menu, Qt::LeftButton, {}, middleOf(0));
    EXPECT_EQ(refreshed_, 1);
    EXPECT_EQ(openMenu(), nullptr);
}

TEST_F(AMenu, ClosesOnAPressElsewhere) {
    click(onIndicator);
    click(onGround);
    EXPECT_EQ(openMenu(), nullptr);
    EXPECT_EQ(refreshed_ + removed_, 0);
}

TEST_F(AMenu, OpensAgainAfterItWasClosed) {
    for (int i = 0; i < 3; ++i) {
        click(onIndicator);
        ASSERT_NE(openMenu(), nullptr);
        click(onIndicator);
        ASSERT_EQ(openMenu(), nullptr);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(control("Actions")->findChildren<QMenu*>().isEmpty()) << "what was closed is kept";
}

TEST_F(AMenu, OpensBySpaceReturnAndDownWithTheFirstItemSelected) {
    focusMenu();
    for (const Qt::Key opening : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Down}) {
        key(opening);
        EXPECT_EQ(chosen(), "Refresh");
        key(Qt::Key_Escape);
        EXPECT_EQ(openMenu(), nullptr);
    }
}

TEST_F(AMenu, GivesFocusBackWhenItCloses) {
    openByKey();
    key(Qt::Key_Down);
    key(Qt::Key_Escape);
    EXPECT_EQ(focused(), "Actions");
    EXPECT_EQ(QApplication::focusWidget(), control("Actions"));
}

TEST_F(AMenu, KeepsItsHandlersWhileItIsOpen) {
    int laterRefreshed = 0;
    int laterRemoved = 0;
    openByKey();
    key(Qt::Key_Down);
    show(content(laterRefreshed, laterRemoved));
    ASSERT_NE(openMenu(), nullptr);
    EXPECT_EQ(chosen(), "Q&&A <b>");
    key(Qt::Key_Return);
    EXPECT_EQ(removed_, 1);
    EXPECT_EQ(laterRemoved, 0);
}

TEST_F(AMenu, OpensWithTheHandlersOfTheLatestScene) {
    int laterRefreshed = 0;
    int laterRemoved = 0;
    show(content(laterRefreshed, laterRemoved));
    openByKey();
    key(Qt::Key_Return);
    EXPECT_EQ(refreshed_, 0);
    EXPECT_EQ(laterRefreshed, 1);
}

TEST_F(AMenu, ClosesWhenItsPlaceIsGone) {
    openByKey();
    show({button(inCard(0, 0), {300, 85, 83, 30}, "Button", [] {})});
    EXPECT_EQ(openMenu(), nullptr);
    EXPECT_EQ(focused(), "Button");
    EXPECT_EQ(refreshed_ + removed_, 0);
}

TEST_F(AMenu, CanRemoveItselfInTheHandlerOfAnItem) {
    const auto all = std::make_shared<std::vector<int>>(1000, 1);
    std::size_t finished = 0;
    show({menu(inCard(0, 1), {391, 93}, "Actions", {item("Remove", [&, all] {
                   window_.present(scene({}));
                   finished = all->size();
               })})});
    click(onIndicator);
    clickItem(0);
    EXPECT_EQ(finished, 1000u);
    EXPECT_EQ(control("Actions"), nullptr);
}

TEST_F(AMenu, IsLightEvenOnADarkDesktop) {
    QApplication::setPalette(QPalette{QColor{20, 20, 20}}, "QMenu");
    QApplication::setPalette(QPalette{QColor{20, 20, 20}});
    click(onIndicator);
    const QImage menu = openMenu()->grab().toImage();
    EXPECT_GT(menu.pixelColor(menu.width() - 6, 6).lightness(), 230);
}

} // namespace
} // namespace platform
