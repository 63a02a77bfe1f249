#include "platform/linux/Conversions.h"

#include "platform/ui/Painting.h"

#include <QWidget>

#include <algorithm>

namespace platform {

QColor toQColor(const ui::Color& color) {
    const auto component = [](const double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
    return QColor::fromRgbF(component(color.red), component(color.green), component(color.blue),
                            component(color.opacity));
}

QFont toQFont(const ui::Font font) {
    QFont result{QStringLiteral("Inter")};
    result.setPixelSize(static_cast<int>(ui::pointSize(font.style)));
    result.setWeight(font.weight == ui::FontWeight::semibold ? QFont::DemiBold : QFont::Normal);
    result.setHintingPreference(QFont::PreferVerticalHinting);
    result.setStyleStrategy(static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    return result;
}

QRectF toQRectF(const ui::Rect& rect) {
    return {rect.x, rect.y, rect.width, rect.height};
}

QRect toScreen(const QWidget& widget, const QRectF& rect) {
    const QPointF origin = widget.mapToGlobal(QPointF{});
    const ui::Rect there{rect.x() + origin.x(), rect.y() + origin.y(), rect.width(), rect.height()};
    return toQRectF(ui::PixelGrid{1}.snapped(there)).toRect();
}

QString toQString(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

} // namespace platform
