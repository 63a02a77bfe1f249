#pragma once

class QString;
class QWidget;

namespace simulator::settings {

/// From here on assistive technology finds each widget in the role that its property "role" names. To be called once.
void useAccessibility();

/// Sets the name that assistive technology reads. It is told of a new one only.
void setName(QWidget& widget, const QString& name);

/// Has a screen reader speak a notification that it may have spoken before: it does so when one comes into view.
void announce(QWidget& widget);

} // namespace simulator::settings
