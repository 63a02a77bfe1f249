#pragma once

#include "platform/ui/Metrics.h"
#include "platform/ui/Painting.h"
#include "platform/ui/Scene.h"

#include <QPainter>

namespace platform {

class ImageStore;

/// Paints the primitives of a scene and of its controls, with edges aligned to device pixels.
class ScenePainter {
public:
    /// Both must outlive this. The painter's coordinates are points.
    ScenePainter(QPainter& painter, const ImageStore& images);

    void paint(const std::vector<ui::SceneNode>& nodes);
    /// Paints the ring around the control that has keyboard focus.
    void paintFocusRing(const ui::Control& control);

private:
    void paint(const ui::Fill& fill);
    void paint(const ui::Stroke& stroke);
    void paint(const ui::TextRun& run);
    void paint(const ui::ImageRun& run);
    void paint(const ui::MenuIndicator& indicator);
    void paint(const ui::Clip& clip);
    void paint(const ui::Control& control);

    QPainter& painter_;
    const ImageStore& images_;
    ui::PixelGrid grid_;
};

/// Sizes of texts and images as ScenePainter paints them.
class QtMetrics : public ui::Metrics {
public:
    /// `images` must outlive this.
    explicit QtMetrics(const ImageStore& images) : images_{images} {}

    ui::Size textSize(const std::string& text, ui::Font font) const override;
    ui::Size imageSize(const ui::ImageReference& image) const override;

private:
    const ImageStore& images_;
};

} // namespace platform
