#pragma once

#include <QAccessible>

namespace platform {

/// Tells assistive technology what happened to an object.
inline void tellAccessibility(QObject* object, const QAccessible::Event type) {
    QAccessibleEvent event{object, type};
    QAccessible::updateAccessibility(&event);
}

} // namespace platform
