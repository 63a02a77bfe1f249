#include "platform/linux/QtMetrics.h"

#include "platform/linux/Conversions.h"
#include "platform/linux/ImageStore.h"

#include <QFontMetricsF>

namespace platform {

ui::Size QtMetrics::textSize(const std::string& text, const ui::Font font) const {
    const QFontMetricsF metrics{toQFont(font)};
    return {metrics.horizontalAdvance(toQString(text)), metrics.height()};
}

ui::Size QtMetrics::imageSize(const ui::ImageReference& image) const {
    const QSizeF size = images_.size(image);
    return {size.width(), size.height()};
}

} // namespace platform
