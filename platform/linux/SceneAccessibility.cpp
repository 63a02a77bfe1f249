#include "platform/linux/SceneAccessibility.h"

#include "platform/linux/Conversions.h"
#include "platform/linux/MainWindow.h"
#include "platform/linux/SceneCanvas.h"
#include "platform/linux/SceneElement.h"
#include "platform/linux/SceneMenu.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QAction>
#include <QWidget>

#include <algorithm>
#include <memory>

namespace platform {

namespace {

class AccessibleWindow : public QAccessibleWidget {
public:
    explicit AccessibleWindow(MainWindow& window) : QAccessibleWidget{&window, QAccessible::Window} {}
};

class AccessibleCanvas : public QAccessibleWidget {
public:
    explicit AccessibleCanvas(SceneCanvas& canvas)
        : QAccessibleWidget{&canvas, QAccessible::Grouping}, canvas_{canvas} {}

    int childCount() const override { return static_cast<int>(canvas_.readingOrder().size()); }
    QAccessibleInterface* child(const int index) const override {
        if (index < 0 || index >= childCount()) return nullptr;
        return QAccessible::queryAccessibleInterface(canvas_.readingOrder()[static_cast<std::size_t>(index)]);
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto& order = canvas_.readingOrder();
        const auto found = child ? std::find(order.begin(), order.end(), child->object()) : order.end();
        return found == order.end() ? -1 : static_cast<int>(found - order.begin());
    }
    QAccessibleInterface* childAt(const int x, const int y) const override {
        for (QObject* object : canvas_.readingOrder()) {
            QAccessibleInterface* child = QAccessible::queryAccessibleInterface(object);
            if (child && child->rect().contains(x, y)) return child;
        }
        return nullptr;
    }

private:
    const SceneCanvas& canvas_;
};

class AccessibleElement : public QAccessibleObject {
public:
    explicit AccessibleElement(SceneElement& element) : QAccessibleObject{&element}, element_{element} {}

    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(&element_.canvas()); }
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QRect rect() const override { return element_.screenRect(); }
    QAccessible::Role role() const override { return element_.role(); }
    QString text(const QAccessible::Text which) const override {
        return which == QAccessible::Name ? element_.name() : QString{};
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.invisible = !element_.canvas().isVisible();
        return state;
    }
    QWindow* window() const override { return element_.canvas().window()->windowHandle(); }

private:
    const SceneElement& element_;
};

/// A button, or a button with a menu.
class AccessibleControl : public QAccessibleWidget {
public:
    explicit AccessibleControl(SceneControl& control)
        : QAccessibleWidget{&control, QAccessible::Button}, control_{control} {}

    int childCount() const override { return openMenu() ? 1 : 0; }
    QAccessibleInterface* child(const int index) const override {
        return index == 0 ? QAccessible::queryAccessibleInterface(openMenu()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return child && openMenu() && child->object() == openMenu() ? 0 : -1;
    }
    QAccessible::Role role() const override { return menu() ? QAccessible::ButtonMenu : QAccessible::Button; }
    QString text(const QAccessible::Text which) const override {
        return which == QAccessible::Name ? toQString(control_.control().accessibleName) : QString{};
    }
    QRect rect() const override { return toScreen(*control_.parentWidget(), toQRectF(control_.control().rect)); }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        const bool isMenu = menu() != nullptr;
        state.hasPopup = isMenu;
        state.expandable = isMenu;
        state.expanded = isMenu && openMenu();
        state.collapsed = isMenu && !openMenu();
        return state;
    }
    QStringList actionNames() const override {
        QStringList names{pressAction()};
        if (menu()) names << showMenuAction();
        return names << setFocusAction();
    }
    void doAction(const QString& name) override {
        if (name == setFocusAction())
            control_.setFocus(Qt::OtherFocusReason);
        else if (actionNames().contains(name))
            control_.click();
    }

private:
    QObject* openMenu() const { return menu() ? menu()->openMenu() : nullptr; }
    const SceneMenu* menu() const { return dynamic_cast<const SceneMenu*>(&control_); }

    SceneControl& control_;
};

/// An open menu: a child of the control that opened it.
class AccessibleMenu : public QAccessibleWidget {
public:
    explicit AccessibleMenu(MenuPopup& menu) : QAccessibleWidget{&menu, QAccessible::PopupMenu}, menu_{menu} {}

    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(&menu_.opener()); }
    int childCount() const override { return static_cast<int>(menu_.actions().size()); }
    QAccessibleInterface* child(const int index) const override {
        return QAccessible::queryAccessibleInterface(menu_.actions().value(index));
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return child ? static_cast<int>(menu_.actions().indexOf(qobject_cast<QAction*>(child->object()))) : -1;
    }
    QString text(const QAccessible::Text which) const override {
        return which == QAccessible::Name ? toQString(menu_.opener().control().accessibleName) : QString{};
    }

private:
    const MenuPopup& menu_;
};

class AccessibleMenuItem : public QAccessibleObject, public QAccessibleActionInterface {
public:
    AccessibleMenuItem(QAction& action, MenuPopup& menu) : QAccessibleObject{&action}, action_{action}, menu_{menu} {}

    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(&menu_); }
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QRect rect() const override { return toScreen(menu_, menu_.actionGeometry(&action_)); }
    QAccessible::Role role() const override { return QAccessible::MenuItem; }
    QString text(const QAccessible::Text which) const override {
        return which == QAccessible::Name ? action_.data().toString() : QString{};
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.focusable = true;
        state.focused = menu_.activeAction() == &action_;
        state.invisible = !menu_.isVisible();
        return state;
    }
    QWindow* window() const override { return menu_.windowHandle(); }

    void* interface_cast(const QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : QAccessibleObject::interface_cast(type);
    }
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& name) override {
        if (name == pressAction()) menu_.choose(action_);
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QAction& action_;
    MenuPopup& menu_;
};

/// The caller owns what it gets.
QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    if (auto* canvas = dynamic_cast<SceneCanvas*>(object)) return std::make_unique<AccessibleCanvas>(*canvas).release();
    if (auto* element = dynamic_cast<SceneElement*>(object)) {
        return std::make_unique<AccessibleElement>(*element).release();
    }
    if (auto* control = dynamic_cast<SceneControl*>(object)) {
        return std::make_unique<AccessibleControl>(*control).release();
    }
    if (auto* menu = dynamic_cast<MenuPopup*>(object)) return std::make_unique<AccessibleMenu>(*menu).release();
    if (auto* action = dynamic_cast<QAction*>(object)) {
        if (auto* menu = dynamic_cast<MenuPopup*>(action->parent())) {
            return std::make_unique<AccessibleMenuItem>(*action, *menu).release();
        }
    }
    if (auto* window = dynamic_cast<MainWindow*>(object)) return std::make_unique<AccessibleWindow>(*window).release();
    return nullptr;
}

} // namespace

SceneAccessibility::SceneAccessibility() {
    QAccessible::installFactory(interfaceOf);
}

SceneAccessibility::~SceneAccessibility() {
    QAccessible::removeFactory(interfaceOf);
}

} // namespace platform
