#include "platform/linux/SceneAccessibility.h"

#include "tests/platform/linux/window/WindowTest.h"

#include <QAccessible>
#include <QMenu>
#include <QWindow>

#include <algorithm>

namespace platform {
namespace {

/// The events that assistive technology receives from a window, and what it reads there.
class AssistiveTechnology : public WindowTest {
protected:
    struct Told {
        QAccessible::Event type;
        QAccessible::Role role;
        std::string name;
        friend bool operator==(const Told&, const Told&) = default;
    };

    AssistiveTechnology() {
        show(screen("Sentence"));
        told().clear();
        QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
            if (const QAccessibleInterface* source = event->accessibleInterface()) {
                told().push_back({event->type(), source->role(), source->text(QAccessible::Name).toStdString()});
            }
        });
    }
    ~AssistiveTechnology() override { QAccessible::installUpdateHandler(nullptr); }

    std::vector<ui::SceneNode> screen(const std::string& sentence) {
        return {
            announcedText({44, 12}, sentence), namedImage({58, 90, 22, 22}, "Ethernet", "Network Driver, enabled"),
            text({105, 85}, "Salt & <b>Pepper</b>"),
            button(inCard(0, 0), {300, 85.25, 83, 30}, "Activate", [this] { ++pressed_; }),
            menu(inCard(0, 1), {391, 93}, "Actions", {item("Refresh", [this] { ++chosen_; }), item("A & B", [] {})})};
    }

    static std::vector<Told>& told() {
        static std::vector<Told> events;
        return events;
    }
    static long count(const Told& expected) { return std::count(told().begin(), told().end(), expected); }

    QAccessibleInterface* window() { return QAccessible::queryAccessibleInterface(&window_); }
    QAccessibleInterface* canvas() { return window()->child(0); }
    QAccessibleInterface* element(const char* name) {
        for (int i = 0; i < canvas()->childCount(); ++i) {
            QAccessibleInterface* child = canvas()->child(i);
            if (child->text(QAccessible::Name) == QLatin1String{name}) return child;
        }
        return nullptr;
    }
    std::vector<std::string> names() {
        std::vector<std::string> result;
        for (int i = 0; i < canvas()->childCount(); ++i)
            result.push_back(canvas()->child(i)->text(QAccessible::Name).toStdString());
        return result;
    }
    QRect inWindow(const QRect& rect) { return {window_.mapFromGlobal(rect.topLeft()), rect.size()}; }
    static void act(QAccessibleInterface* object, const QString& action) {
        object->actionInterface()->doAction(action);
    }

    ActiveAccessibility active_;
    int pressed_ = 0;
    int chosen_ = 0;
};

TEST_F(AssistiveTechnology, FindsTheWindowByItsTitle) {
    EXPECT_EQ(window()->role(), QAccessible::Window);
    EXPECT_EQ(window()->text(QAccessible::Name), "Window");
    EXPECT_EQ(window()->childCount(), 1);
}

TEST_F(AssistiveTechnology, ReadsEverythingInReadingOrder) {
    EXPECT_EQ(names(), (std::vector<std::string>{"Sentence", "Network Driver, enabled", "Salt & <b>Pepper</b>",
                                                 "Activate", "Actions"}));
    for (int i = 0; i < canvas()->childCount(); ++i) {
        EXPECT_EQ(canvas()->indexOfChild(canvas()->child(i)), i);
        EXPECT_EQ(canvas()->child(i)->parent(), canvas());
    }
    EXPECT_EQ(canvas()->child(5), nullptr);
}

TEST_F(AssistiveTechnology, SeesWhatEachThingIs) {
    EXPECT_EQ(element("Salt & <b>Pepper</b>")->role(), QAccessible::StaticText);
    EXPECT_EQ(element("Network Driver, enabled")->role(), QAccessible::Graphic);
    EXPECT_EQ(element("Activate")->role(), QAccessible::Button);
    EXPECT_EQ(element("Actions")->role(), QAccessible::ButtonMenu);
    EXPECT_TRUE(element("Actions")->state().hasPopup);
}

TEST_F(AssistiveTechnology, FindsEachThingAtItsPosition) {
    EXPECT_EQ(inWindow(element("Network Driver, enabled")->rect()), QRect(58, 90, 22, 22));
    EXPECT_EQ(inWindow(element("Salt & <b>Pepper</b>")->rect()), QRect(105, 85, 200, 16));
    EXPECT_EQ(inWindow(element("Activate")->rect()), QRect(300, 85, 83, 30));
    EXPECT_EQ(inWindow(element("Actions")->rect()), QRect(391, 93, 10, 16));
    const QPoint onMenu = window_.mapToGlobal(QPoint{395, 100});
    EXPECT_EQ(canvas()->childAt(onMenu.x(), onMenu.y()), element("Actions"));
}

TEST_F(AssistiveTechnology, PressesAButton) {
    act(element("Activate"), QAccessibleActionInterface::pressAction());
    EXPECT_EQ(pressed_, 1);
}

TEST_F(AssistiveTechnology, SetsTheFocus) {
    act(element("Actions"), QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(focused(), "Actions");
    EXPECT_TRUE(element("Actions")->state().focused);
}

TEST_F(AssistiveTechnology, OpensAMenuByEitherAction) {
    for (const QString& action :
         {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::showMenuAction()}) {
        EXPECT_TRUE(element("Actions")->state().collapsed);
        act(element("Actions"), action);
        ASSERT_NE(openMenu(), nullptr);
        EXPECT_TRUE(element("Actions")->state().expanded);
        openMenu()->close();
    }
}

TEST_F(AssistiveTechnology, DoesNotReopenAnOpenMenu) {
    act(element("Actions"), QAccessibleActionInterface::showMenuAction());
    const QMenu* const menu = openMenu();
    act(element("Actions"), QAccessibleActionInterface::showMenuAction());
    EXPECT_EQ(openMenu(), menu);
}

TEST_F(AssistiveTechnology, IsNotToldOfTheWindowWhenAMenuOpensOrCloses) {
    for (const auto type : {QEvent::FocusOut, QEvent::FocusIn}) {
        QFocusEvent focus{type, type == QEvent::FocusOut ? Qt::PopupFocusReason : Qt::ActiveWindowFocusReason};
        QCoreApplication::sendEvent(window_.windowHandle(), &focus);
    }
    EXPECT_EQ(told(), std::vector<Told>{});
    QFocusEvent lost{QEvent::FocusOut, Qt::ActiveWindowFocusReason};
    QCoreApplication::sendEvent(window_.windowHandle(), &lost);
    EXPECT_EQ(count({QAccessible::StateChanged, QAccessible::Window, "Window"}), 1);
}

TEST_F(AssistiveTechnology, ReadsAnOpenMenuAsPartOfItsControl) {
    EXPECT_EQ(element("Actions")->childCount(), 0);
    act(element("Actions"), QAccessibleActionInterface::showMenuAction());
    ASSERT_EQ(element("Actions")->childCount(), 1);
    QAccessibleInterface* const menu = element("Actions")->child(0);
    EXPECT_EQ(menu->role(), QAccessible::PopupMenu);
    EXPECT_EQ(menu->parent(), element("Actions"));
    ASSERT_EQ(menu->childCount(), 2);
    EXPECT_EQ(menu->child(0)->role(), QAccessible::MenuItem);
    EXPECT_EQ(menu->child(0)->text(QAccessible::Name), "Refresh");
    EXPECT_TRUE(menu->child(0)->state().focused);
    EXPECT_EQ(menu->child(1)->text(QAccessible::Name), "A & B");
    EXPECT_EQ(menu->child(1)->rect().top(), menu->child(0)->rect().bottom() + 1);
    EXPECT_EQ(menu->child(1)->parent(), menu);
    EXPECT_EQ(menu->indexOfChild(menu->child(1)), 1);
    openMenu()->close();
    EXPECT_EQ(element("Actions")->childCount(), 0);
}

TEST_F(AssistiveTechnology, ChoosesAnItemAndClosesTheMenu) {
    act(element("Actions"), QAccessibleActionInterface::showMenuAction());
    act(element("Actions")->child(0)->child(0), QAccessibleActionInterface::pressAction());
    EXPECT_EQ(chosen_, 1);
    EXPECT_EQ(openMenu(), nullptr);
}

TEST_F(AssistiveTechnology, IsToldOfAnAnnouncedTextThatChanged) {
    show(screen("Other sentence"));
    EXPECT_EQ(element("Other sentence")->role(), QAccessible::Notification);
    EXPECT_EQ(count({QAccessible::NameChanged, QAccessible::Notification, "Other sentence"}), 1);
    EXPECT_EQ(count({QAccessible::Alert, QAccessible::Notification, "Other sentence"}), 1);
    EXPECT_EQ(count({QAccessible::ObjectShow, QAccessible::Notification, "Other sentence"}), 1);
}

TEST_F(AssistiveTechnology, IsNotToldOfAnUnchangedScene) {
    show(screen("Sentence"));
    EXPECT_EQ(told(), std::vector<Told>{});
}

TEST_F(AssistiveTechnology, IsToldOfAnOrdinaryTextThatChangedWithoutAnAlert) {
    auto nodes = screen("Sentence");
    nodes[2] = text({105, 85}, "Enabled");
    show(nodes);
    EXPECT_EQ(told(), (std::vector<Told>{{QAccessible::NameChanged, QAccessible::StaticText, "Enabled"}}));
}

TEST_F(AssistiveTechnology, IsToldOfAControlWhoseNameChanged) {
    auto nodes = screen("Sentence");
    nodes[3] = button(inCard(0, 0), {300, 85.25, 83, 30}, "Upgrade", [] {});
    show(nodes);
    EXPECT_EQ(told(), (std::vector<Told>{{QAccessible::NameChanged, QAccessible::Button, "Upgrade"}}));
}

TEST_F(AssistiveTechnology, IsToldOfEachNewAndEachRemovedObject) {
    auto nodes = screen("Sentence");
    nodes.pop_back();
    nodes.push_back(text({105, 185}, "New"));
    show(nodes);
    EXPECT_EQ(count({QAccessible::ObjectDestroyed, QAccessible::ButtonMenu, "Actions"}), 1);
    EXPECT_EQ(count({QAccessible::ObjectCreated, QAccessible::StaticText, "New"}), 1);
    EXPECT_EQ(names().back(), "New");
    show(screen("Sentence"));
    EXPECT_EQ(count({QAccessible::ObjectDestroyed, QAccessible::StaticText, "New"}), 1);
}

TEST_F(AssistiveTechnology, KeepsTheObjectsOfATextFromSceneToScene) {
    const QAccessibleInterface* const sentence = element("Sentence");
    const QAccessibleInterface* const activate = element("Activate");
    show(screen("Other sentence"));
    EXPECT_EQ(element("Other sentence"), sentence);
    EXPECT_EQ(element("Activate"), activate);
}

} // namespace
} // namespace platform
