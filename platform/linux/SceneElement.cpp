#include "platform/linux/SceneElement.h"

#include "platform/linux/AccessibilityEvents.h"
#include "platform/linux/Conversions.h"

#include <utility>

namespace platform {

void SceneElement::follow(const Kind kind, const QString& name, const QRectF& rect) {
    kind_ = kind;
    rect_ = rect;
    const bool changed = std::exchange(name_, name) != name;
    if (!std::exchange(followed_, true) || !changed) return;
    tellAccessibility(this, QAccessible::NameChanged);
    if (kind_ != Kind::announcedText) return;
    // Screen readers speak a notification when it comes into view.
    tellAccessibility(this, QAccessible::Alert);
    tellAccessibility(this, QAccessible::ObjectShow);
}

QAccessible::Role SceneElement::role() const {
    switch (kind_) {
    case Kind::text:
        return QAccessible::StaticText;
    case Kind::announcedText:
        return QAccessible::Notification;
    case Kind::image:
        return QAccessible::Graphic;
    }
    return QAccessible::StaticText;
}

QRect SceneElement::screenRect() const {
    return toScreen(canvas_, rect_);
}

} // namespace platform
