#pragma once

#include "platform/ui/Geometry.h"
#include "platform/ui/Style.h"

#include <QColor>
#include <QFont>
#include <QRectF>

class QWidget;

namespace platform {

/// The color of the focus ring and of the selected menu item.
inline constexpr QColor accentColor{0, 103, 244};

/// Clamps each component to 0 to 1.
QColor toQColor(const ui::Color& color);
/// Inter, sized in device-independent pixels. Without horizontal hinting, so that text is painted as wide as measured.
QFont toQFont(ui::Font font);
QRectF toQRectF(const ui::Rect& rect);

/// Sets one style, whatever the desktop's is. Call it before the QApplication is created.
void chooseStyle();
/// Gives a top-level widget and its children light colors and the body font, whatever the desktop's are.
void useLightAppearance(QWidget& widget);

} // namespace platform
