#pragma once

#include <QColor>

class QWidget;

namespace platform {

/// What has keyboard focus, and what is chosen in a menu.
inline constexpr QColor accentColor{0, 103, 244};

/// One style for every application that is made after the call, whatever the desktop's is.
void chooseStyle();
/// Light colours and the body font for a top-level widget and what is in it, whatever the desktop's are.
void useLightAppearance(QWidget& widget);

} // namespace platform
