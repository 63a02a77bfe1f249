#pragma once

#include "platform/ui/PixelGrid.h"
#include "platform/ui/Scene.h"

#include <QPainter>
#include <QPainterPath>

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

    /// The shape on the pixel grid, its outline moved outwards by `margin`.
    QPainterPath outline(ui::ShapeKind shape, const ui::Rect& rect, double margin = 0) const;

    QPainter& painter_;
    const ImageStore& images_;
    ui::PixelGrid grid_;
};

} // namespace platform
