#pragma once

#include "platform/ui/Scene.h"

#include <QAbstractButton>
#include <QPointer>
#include <QRectF>

class QMenu;

namespace platform {

class ImageStore;

/// An invisible native control over a painted control of the scene. It lives as long as there is a control at its
/// place, across scenes. A button runs its action when it is released inside; a menu opens on a press.
class SceneControl : public QAbstractButton {
public:
    /// `images` must outlive this.
    SceneControl(QWidget& canvas, const ImageStore& images);

    /// Updates handlers, name, and position. A press counts inside `hitArea` (in points of the canvas).
    void follow(const ui::Control& control, const ui::Rect& hitArea);
    /// Hides the control and closes its menu. Call it when its place is gone.
    void dismiss();

    const ui::Control& control() const { return control_; }
    bool isMenu() const { return std::holds_alternative<ui::PullDownMenu>(control_.kind); }
    /// The menu while it is open, else null.
    QMenu* openMenu() const;

protected:
    bool hitButton(const QPoint& position) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent*) override {}

private:
    /// Reacts to a press, except of the mouse on a menu: runs the action, or opens the menu at its first item.
    void activate();
    void open();
    /// Opens the menu with its first or last item selected.
    void openAt(Qt::Edge end);

    const ImageStore& images_;
    ui::Control control_;
    QRectF hitArea_;
    QPointer<QMenu> popup_;
};

} // namespace platform
