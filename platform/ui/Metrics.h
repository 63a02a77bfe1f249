#pragma once

#include "platform/ui/Font.h"
#include "platform/ui/Geometry.h"
#include "platform/ui/Scene.h"

#include <string>

namespace platform::ui {

/// The one thing that layout asks of the window: how large texts and images are, in points.
class Metrics {
public:
    Metrics() = default;
    Metrics(const Metrics&) = delete;
    Metrics& operator=(const Metrics&) = delete;
    virtual ~Metrics() = default;

    /// The size of one line. An empty text is as high as any other.
    virtual Size textSize(const std::string& text, Font font) const = 0;
    /// The image's own size; nothing by nothing if it is missing.
    virtual Size imageSize(const ImageReference& image) const = 0;
};

} // namespace platform::ui
