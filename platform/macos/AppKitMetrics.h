#pragma once

#include "platform/ui/Metrics.h"

namespace platform {

class ImageStore;

/// Sizes of texts and images as the scene painter draws them. Main thread only.
class AppKitMetrics : public ui::Metrics {
public:
    /// `images` outlives this.
    explicit AppKitMetrics(const ImageStore& images) : images_{images} {}

    ui::Size textSize(const std::string& text, ui::Font font) const override;
    ui::Size imageSize(const ui::ImageReference& image) const override;

private:
    const ImageStore& images_;
};

} // namespace platform
