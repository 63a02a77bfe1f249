#pragma once

#include "platform/ui/Metrics.h"
#include "platform/ui/Painting.h"
#include "platform/ui/Scene.h"

#include <QPainter>

namespace platform {

class ImageStore;

/// Paints the primitives of a scene, those of its controls too. Edges are moved to device pixels here.
class ScenePainter {
public:
    /// Both outlive this. The painter's coordinates are points; its device says how many pixels one is.
    ScenePainter(QPainter& painter, const ImageStore& images);

    void paint(const std::vector<ui::SceneNode>& nodes);
    /// The ring around the control that has keyboard focus.
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

/// Sizes of texts and images as the scene painter draws them.
class QtMetrics : public ui::Metrics {
public:
    /// `images` outlives this.
    explicit QtMetrics(const ImageStore& images) : images_{images} {}

    ui::Size textSize(const std::string& text, ui::Font font) const override;
    ui::Size imageSize(const ui::ImageReference& image) const override;

private:
    const ImageStore& images_;
};

} // namespace platform
