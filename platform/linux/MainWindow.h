#pragma once

#include "platform/linux/SceneCanvas.h"

#include <QWidget>

namespace platform {

/// The window: it has a title, a fixed size (its scene's), and light colors.
class MainWindow : public QWidget {
public:
    /// `images` must outlive this.
    MainWindow(const QString& title, const ImageStore& images);

    /// Replaces the scene.
    void present(const ui::Scene& scene);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    bool focusNextPrevChild(const bool next) override { return canvas_.focusNextPrevChild(next); }

private:
    const ImageStore& images_;
    SceneCanvas canvas_;
    bool inMenu_ = false; // a menu of this window has focus
};

} // namespace platform
