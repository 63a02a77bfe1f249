#pragma once

#include "platform/ui/Geometry.h"
#include "platform/ui/Style.h"

#include <QColor>
#include <QFont>
#include <QRectF>

class QWidget;

// How things look: what a scene says, in Qt's words, and what it does not say.

namespace platform {

/// What has keyboard focus, and what is chosen in a menu.
inline constexpr QColor accentColor{0, 103, 244};

/// Components outside 0 to 1 become the nearest that can be shown.
QColor toQColor(const ui::Color& color);
/// Inter, sized in device-independent pixels whatever the desktop's resolution is said to be. Unhinted across, so that
/// a text is as wide when painted as it was measured, at any scale.
QFont toQFont(ui::Font font);
QRectF toQRectF(const ui::Rect& rect);

/// One style for every application that is made after the call, whatever the desktop's is.
void chooseStyle();
/// Light colors and the body font for a top-level widget and what is in it, whatever the desktop's are.
void useLightAppearance(QWidget& widget);

} // namespace platform
