#pragma once

#include "platform/ui/Metrics.h"

#include <map>
#include <string>

namespace platform::fake {

/// Sizes that depend only on the number of bytes and the font: each byte is 0.45 of the point size wide, a line
/// 1.25 of it high. Counts its measurements.
class FixedMetrics : public ui::Metrics {
public:
    /// In points, whatever the text is.
    ui::Size textSize(const std::string& text, const ui::Font font) const override {
        ++textMeasurements;
        const double points = ui::pointSize(font.style);
        return {0.45 * points * static_cast<double>(text.size()), 1.25 * points};
    }
    ui::Size imageSize(const ui::ImageReference& image) const override {
        const auto known = images.find(image.name);
        return known == images.end() ? ui::Size{} : known->second;
    }

    /// The sizes of images, in points. Any other image has no size.
    std::map<std::string, ui::Size> images;
    /// How often a text was measured.
    mutable int textMeasurements = 0;
};

} // namespace platform::fake
