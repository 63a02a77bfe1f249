#include "simulator/SystemSettings/Accessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>

namespace simulator::settings {

namespace {

/// What the toolkit asks for how an object is told; what it is given is its own.
QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    static const QHash<QString, QAccessible::Role> roles{
        {"window", QAccessible::Window}, {"card", QAccessible::List},      {"item", QAccessible::ListItem},
        {"sheet", QAccessible::Dialog},  {"line", QAccessible::Separator},
    };
    auto* const widget = qobject_cast<QWidget*>(object);
    const auto role = widget == nullptr ? roles.end() : roles.find(widget->property("role").toString());
    return role == roles.end() ? nullptr : new QAccessibleWidget{widget, *role};
}

} // namespace

void useAccessibility() {
    QAccessible::installFactory(interfaceOf);
}

} // namespace simulator::settings
