#pragma once

#include "platform/ui/Painting.h"
#include "platform/ui/Scene.h"

namespace platform {

class ImageStore;

/// Paints the primitives of a scene, those of its controls too, in the current graphics context, whose coordinates are
/// flipped points. Edges are moved to device pixels here.
class ScenePainter {
public:
    /// `images` outlives this.
    ScenePainter(const ImageStore& images, const ui::PixelGrid& grid) : images_{images}, grid_{grid} {}

    void paint(const std::vector<ui::SceneNode>& nodes) const;
    /// Fills the shape that is seen of the control, for its focus ring.
    void fillLook(const ui::Control& control) const;

private:
    void paint(const ui::Fill& fill) const;
    void paint(const ui::Stroke& stroke) const;
    void paint(const ui::TextRun& run) const;
    void paint(const ui::ImageRun& run) const;
    void paint(const ui::MenuIndicator& indicator) const;
    void paint(const ui::Clip& clip) const;
    void paint(const ui::Control& control) const;

    const ImageStore& images_;
    ui::PixelGrid grid_;
};

} // namespace platform
