#include "platform/linux/SceneAccessibility.h"

#include "platform/linux/Appearance.h"
#include "platform/linux/MainWindow.h"
#include "platform/linux/SceneCanvas.h"
#include "platform/linux/SceneControl.h"
#include "platform/ui/Painting.h"

#include <QAccessibleWidget>
#include <QMenu>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

/// `rect`, in points of `widget`, on the screen.
QRect toScreen(const QWidget& widget, const QRectF& rect) {
    const QPointF origin = widget.mapToGlobal(QPointF{});
    const ui::Rect there{rect.x() + origin.x(), rect.y() + origin.y(), rect.width(), rect.height()};
    return toQRectF(ui::PixelGrid{1}.snapped(there)).toRect();
}

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
    QRect rect() const override { return toScreen(element_.canvas(), element_.rect()); }
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

class AccessibleControl : public QAccessibleWidget {
public:
    explicit AccessibleControl(SceneControl& control)
        : QAccessibleWidget{&control, QAccessible::Button}, control_{control} {}

    int childCount() const override { return control_.openMenu() ? 1 : 0; }
    QAccessibleInterface* child(const int index) const override {
        return index == 0 ? QAccessible::queryAccessibleInterface(control_.openMenu()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const QMenu* menu = control_.openMenu();
        return child && menu && child->object() == menu ? 0 : -1;
    }
    QAccessible::Role role() const override {
        return control_.isMenu() ? QAccessible::ButtonMenu : QAccessible::Button;
    }
    QRect rect() const override { return toScreen(*control_.parentWidget(), toQRectF(control_.control().rect)); }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.hasPopup = control_.isMenu();
        state.expandable = control_.isMenu();
        state.expanded = control_.openMenu() != nullptr;
        state.collapsed = control_.isMenu() && !control_.openMenu();
        return state;
    }
    QStringList actionNames() const override {
        QStringList names{pressAction()};
        if (control_.isMenu()) names << showMenuAction();
        return names << setFocusAction();
    }
    void doAction(const QString& name) override {
        if (name == setFocusAction())
            control_.setFocus(Qt::OtherFocusReason);
        else if (actionNames().contains(name))
            control_.click();
    }

private:
    SceneControl& control_;
};

/// An open menu: a child of the control that opened it.
class AccessibleMenu : public QAccessibleWidget {
public:
    explicit AccessibleMenu(QMenu& menu) : QAccessibleWidget{&menu, QAccessible::PopupMenu}, menu_{menu} {}

    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(menu_.parentWidget());
    }
    int childCount() const override { return static_cast<int>(menu_.actions().size()); }
    QAccessibleInterface* child(const int index) const override {
        return QAccessible::queryAccessibleInterface(menu_.actions().value(index));
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return child ? static_cast<int>(menu_.actions().indexOf(qobject_cast<QAction*>(child->object()))) : -1;
    }

private:
    const QMenu& menu_;
};

class AccessibleMenuItem : public QAccessibleObject, public QAccessibleActionInterface {
public:
    AccessibleMenuItem(QAction& action, QMenu& menu) : QAccessibleObject{&action}, action_{action}, menu_{menu} {}

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
        if (name != pressAction()) return;
        menu_.close();
        action_.trigger();
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QAction& action_;
    QMenu& menu_;
};

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    if (auto* window = dynamic_cast<MainWindow*>(object)) return new QAccessibleWidget{window, QAccessible::Window};
    if (auto* canvas = dynamic_cast<SceneCanvas*>(object)) return new AccessibleCanvas{*canvas};
    if (auto* element = dynamic_cast<SceneElement*>(object)) return new AccessibleElement{*element};
    if (auto* control = dynamic_cast<SceneControl*>(object)) return new AccessibleControl{*control};
    if (auto* menu = dynamic_cast<QMenu*>(object)) return new AccessibleMenu{*menu};
    if (auto* action = dynamic_cast<QAction*>(object)) {
        if (auto* menu = dynamic_cast<QMenu*>(action->parent())) return new AccessibleMenuItem{*action, *menu};
    }
    return nullptr;
}

} // namespace

void makeScenesAccessible() {
    QAccessible::installFactory(interfaceOf);
}

void SceneElement::follow(const QAccessible::Role role, const std::string& name, const ui::Rect& rect) {
    const bool isNew = std::exchange(role_, role) == QAccessible::NoRole;
    rect_ = toQRectF(rect);
    const auto before = std::exchange(name_, QString::fromStdString(name));
    if (isNew || name_ == before) return;
    tellAccessibility(*this, QAccessible::NameChanged);
    if (role_ != QAccessible::Notification) return;
    // Screen readers announce a notification when it appears.
    tellAccessibility(*this, QAccessible::Alert);
    tellAccessibility(*this, QAccessible::ObjectShow);
}

void tellAccessibility(QObject& object, const QAccessible::Event type) {
    QAccessibleEvent event{&object, type};
    QAccessible::updateAccessibility(&event);
}

} // namespace platform
