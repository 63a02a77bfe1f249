#pragma once

#include "platform/ui/Scene.h"

#include <QWidget>

#include <cstddef>
#include <optional>
#include <vector>

namespace platform {

class ImageStore;
class SceneControl;

/// Shows a scene: paints it, and keeps a child for each member of its reading order, which goes on as long as the
/// member does: a native control (SceneControl) over each control, an accessible object (SceneElement) for each text
/// and named image. Tab goes from control to control in that order.
class SceneCanvas : public QWidget {
public:
    /// `images` outlives this.
    SceneCanvas(QWidget& window, const ImageStore& images);

    /// Shows `scene` in place of the one before.
    void present(const ui::Scene& scene);

    /// Gives focus to the next control in reading order, or the one before; to the first or last from elsewhere.
    bool focusNextPrevChild(bool next) override;

    /// The children, for assistive technology.
    const std::vector<QObject*>& readingOrder() const { return readingOrder_; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    using Predecessors = std::vector<std::optional<std::size_t>>;

    /// Makes the reading order that of the scene; returns the children that have no place in it any more.
    std::vector<QObject*> followReadingOrder(const Predecessors& predecessors);
    /// The child for a member of the reading order: `same` if it is there, else a new one.
    QObject* follow(const ui::TextRun& text, QObject* same);
    QObject* follow(const ui::ImageRun& image, QObject* same);
    QObject* follow(const ui::Control& control, QObject* same);
    void moveFocus(const ui::Scene& before, const SceneControl& focused);

    std::vector<SceneControl*> controls() const;
    SceneControl* focusedControl() const;

    const ImageStore& images_;
    ui::Scene scene_;
    std::vector<QObject*> readingOrder_;
    bool focusIsSeen_ = false;
};

} // namespace platform
