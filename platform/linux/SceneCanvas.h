#pragma once

#include "platform/linux/SceneControl.h"
#include "platform/linux/SceneElement.h"
#include "platform/ui/Scene.h"

#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

namespace platform {

class ImageStore;

/// Shows a scene: paints it, and keeps over it one native control per control, and one accessible object per text and
/// named image.
class SceneCanvas : public QWidget {
public:
    /// `images` outlives this.
    SceneCanvas(QWidget& window, const ImageStore& images);

    /// Shows `scene` in place of the one before. Controls are the same where their place is the same.
    void present(const ui::Scene& scene);

    /// Texts, images and controls, for assistive technology.
    const std::vector<QObject*>& readingOrder() const { return readingOrder_; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void paintEvent(QPaintEvent* event) override;

private:
    using Controls = std::vector<DeletedLater<SceneControl>>;
    using Elements = std::vector<std::unique_ptr<SceneElement>>;

    void followControls(const ui::Scene& before);
    void followElements();
    DeletedLater<SceneControl> takeControl(const ui::Control& control);
    void moveFocus(const ui::Scene& before, const SceneControl& focused);
    SceneControl* focusedControl() const;

    const ImageStore& images_;
    ui::Scene scene_;
    Controls controls_;
    Elements texts_;
    Elements imageElements_;
    std::vector<QObject*> readingOrder_;
    bool focusIsSeen_ = false;
};

} // namespace platform
