#include "simulator/SystemSettings/Appearance.h"

#include "simulator/SystemSettings/Appearance.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCheckBox>
#include <QHash>
#include <QLabel>

namespace simulator::settings {

namespace {

constexpr QMargins ringMargins{ringMargin, ringMargin, ringMargin, ringMargin};

/// A widget of which its role says what else it is.
class Part : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;

    QString text(QAccessible::Text which) const override {
        const auto* label = qobject_cast<const QLabel*>(widget());
        return which == QAccessible::Name && label != nullptr ? label->text() : QAccessibleWidget::text(which);
    }
    QAccessible::State state() const override {
        auto state = QAccessibleWidget::state();
        const auto* box = qobject_cast<const QCheckBox*>(widget());
        state.modal = role() == QAccessible::Dialog;
        state.checkable = box != nullptr;
        state.checked = box != nullptr && box->isChecked();
        return state;
    }
    /// Without the room for the ring of focus around a switch.
    QRect rect() const override {
        const auto whole = QAccessibleWidget::rect();
        return role() == QAccessible::CheckBox ? whole - ringMargins : whole;
    }
    QStringList actionNames() const override {
        const auto isSwitch = role() == QAccessible::CheckBox;
        return (isSwitch ? QStringList{toggleAction(), pressAction()} : QStringList{}) +
               QAccessibleWidget::actionNames();
    }
    /// A switch is clicked, whatever the action. The toolkit's own would turn it without a click.
    void doAction(const QString& name) override {
        auto* const box = qobject_cast<QCheckBox*>(widget());
        if (box == nullptr || name == setFocusAction()) return QAccessibleWidget::doAction(name);
        box->click();
    }
};

/// What the toolkit asks for how an object is told; what it is given is its own.
QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    static const QHash<QString, QAccessible::Role> roles{
        {"window", QAccessible::Window},   {"title", QAccessible::Heading}, {"heading", QAccessible::Heading},
        {"card", QAccessible::List},       {"item", QAccessible::ListItem}, {"line", QAccessible::Separator},
        {"switch", QAccessible::CheckBox}, {"sheet", QAccessible::Dialog},  {"notice", QAccessible::Notification},
    };
    auto* const widget = qobject_cast<QWidget*>(object);
    const auto role = widget == nullptr ? roles.end() : roles.find(widget->property("role").toString());
    return role == roles.end() ? nullptr : new Part{widget, *role};
}

} // namespace

void setName(QWidget& widget, const QString& name) {
    if (widget.accessibleName() != name) widget.setAccessibleName(name);
}

void announce(QWidget& widget) {
    QAccessibleEvent shown{&widget, QAccessible::ObjectShow};
    QAccessible::updateAccessibility(&shown);
}

void useAccessibility() {
    QAccessible::installFactory(interfaceOf);
}

} // namespace simulator::settings
