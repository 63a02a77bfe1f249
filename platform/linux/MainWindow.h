#pragma once

#include "platform/linux/SceneCanvas.h"

#include <QWidget>

namespace platform {

/// A titled window as large as its scene, which nobody can resize, in light colors.
class MainWindow : public QWidget {
public:
    /// `images` outlives this.
    MainWindow(const QString& title, const ImageStore& images);

    /// Shows `scene` in place of the one before.
    void present(const ui::Scene& scene);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    SceneCanvas canvas_;
    bool isBelowMenu_ = false; // focus is with a menu of this window
};

} // namespace platform
