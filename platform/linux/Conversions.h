#pragma once

#include "platform/ui/Geometry.h"
#include "platform/ui/Style.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

#include <string>

class QWidget;

namespace platform {

/// Components outside 0 to 1 become the nearest that can be shown.
QColor toQColor(const ui::Color& color);
/// Inter, sized in device-independent pixels whatever the desktop's resolution is said to be. Unhinted across, so that
/// a text is as wide when painted as it was measured, at any scale.
QFont toQFont(ui::Font font);
QRectF toQRectF(const ui::Rect& rect);
/// Where on the screen assistive technology finds `rect`, given in the points of `widget`.
QRect toScreen(const QWidget& widget, const QRectF& rect);
QString toQString(const std::string& utf8);

} // namespace platform
