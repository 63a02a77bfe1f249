#pragma once

#include "platform/ui/Scene.h"

#include <QWidget>

#include <cstddef>
#include <optional>
#include <vector>

namespace platform {

class ImageStore;
class SceneControl;

/// Paints a scene and keeps one child per member of its reading order: a native control (SceneControl) over each
/// control, an accessible object (SceneElement) for each text and named image. A child lives as long as its member.
class SceneCanvas : public QWidget {
public:
    /// `images` must outlive this.
    SceneCanvas(QWidget& window, const ImageStore& images);

    /// Replaces the scene.
    void present(const ui::Scene& scene);

    /// Moves focus to the next or previous control in reading order; if none has focus, to the first or last.
    bool focusNextPrevChild(bool next) override;

    /// The children, for assistive technology.
    const std::vector<QObject*>& readingOrder() const { return readingOrder_; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// The predecessor of each member of the reading order, as ui::predecessors() gives it.
    using Predecessors = std::vector<std::optional<std::size_t>>;

    /// Updates the reading order from the scene; returns the children that are no longer in it.
    std::vector<QObject*> followReadingOrder(const Predecessors& predecessors);
    /// The child for a member of the reading order: `same` unless null, else a new one.
    QObject* follow(const ui::TextRun& text, QObject* same);
    QObject* follow(const ui::ImageRun& image, QObject* same);
    QObject* follow(const ui::Control& control, QObject* same);
    void moveFocus(const ui::Scene& before, const SceneControl& focused);

    std::vector<SceneControl*> controls() const;
    SceneControl* focusedControl() const;

    const ImageStore& images_;
    ui::Scene scene_;
    std::vector<QObject*> readingOrder_;
    /// Focus was last moved with the keyboard, so its ring is painted.
    bool focusIsSeen_ = false;
};

} // namespace platform
