#include "simulator/SystemSettings/Roles.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QWidget>

#include <memory>
#include <optional>

namespace simulator::settings {

namespace {

/// A widget as it is told anyway, but for its role.
class WidgetInRole final : public QAccessibleWidget {
public:
    WidgetInRole(QWidget* widget, QAccessible::Role role) : QAccessibleWidget{widget, role} {}
};

std::optional<QAccessible::Role> roleOf(const QString& className, const QObject& object) {
    if (className == u"simulator::settings::SettingsWindow") return QAccessible::Window;
    if (className == u"simulator::settings::ExtensionRow") return QAccessible::ListItem;
    if (className != u"QFrame") return std::nullopt;
    const auto role = object.property("role");
    if (role == "card") return QAccessible::List;
    if (role == "sheet") return QAccessible::Dialog;
    if (role == "line") return QAccessible::Separator;
    return std::nullopt;
}

/// The toolkit asks for each class of an object, the derived ones first; what it is given is its own.
QAccessibleInterface* interfaceOf(const QString& className, QObject* object) {
    auto* const widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr) return nullptr;
    const auto role = roleOf(className, *widget);
    return role ? std::make_unique<WidgetInRole>(widget, *role).release() : nullptr;
}

} // namespace

void useRoles() {
    QAccessible::installFactory(interfaceOf);
}

} // namespace simulator::settings
