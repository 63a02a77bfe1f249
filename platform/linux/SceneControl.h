#pragma once

#include "platform/ui/Scene.h"

#include <QAbstractButton>
#include <QPointer>
#include <QRectF>

class QMenu;

namespace platform {

class ImageStore;

/// What a person or assistive technology presses: an invisible native control over what the canvas paints for a
/// control of the scene. It lives as long as its place does and takes over the control of each new scene.
///
/// A button runs its action once for each press, counted when it is released inside. A menu opens on a press.
class SceneControl : public QAbstractButton {
public:
    /// `images` outlives this.
    SceneControl(QWidget& canvas, const ImageStore& images);

    /// Takes over the control's handlers, name and place. A press on `hitArea`, in the canvas's points, counts.
    void follow(const ui::Control& control, const ui::Rect& hitArea);
    /// The control's place is gone: hides it and ends what goes on with it.
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
    /// What a press does that is not the mouse's on a menu: keys and assistive technology choose its first item.
    void activate();
    void open();
    /// Opens the menu with its first or its last item chosen.
    void openAt(Qt::Edge end);

    const ImageStore& images_;
    ui::Control control_;
    QRectF hitArea_;
    QPointer<QMenu> popup_;
};

} // namespace platform
