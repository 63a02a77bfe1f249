#pragma once

#include "platform/ui/Metrics.h"

#include <map>
#include <string>

namespace platform::fake {

/// Sizes that depend on nothing but the number of bytes and the font: each byte is 0.45 of the point size wide, a line
/// 1.25 of it high. Counts what it is asked.
class FixedMetrics : public ui::Metrics {
public:
    ui::Size textSize(const std::string& text, const ui::Font font) const override {
        ++textMeasurements;
        const double points = ui::pointSize(font.style);
        return {0.45 * points * static_cast<double>(text.size()), 1.25 * points};
    }
    ui::Size imageSize(const ui::ImageReference& image) const override {
        const auto known = images.find(image.name);
        return known == images.end() ? ui::Size{} : known->second;
    }

    std::map<std::string, ui::Size> images;
    mutable int textMeasurements = 0;
};

} // namespace platform::fake
