#pragma once

#include "platform/linux/DeleteLater.h"
#include "platform/ui/Scene.h"

#include <QAbstractButton>
#include <QRectF>

namespace platform {

class ImageStore;

/// What a person or assistive technology presses: an invisible native control over what the canvas paints for a
/// control of the scene. It lives as long as its place does and takes over the control of each new scene.
class SceneControl : public QAbstractButton {
public:
    /// A button or a menu, by the control's role. `images` outlives it.
    static DeletedLater<SceneControl> make(const ui::Control& control, QWidget& canvas, const ImageStore& images);

    /// Takes over the control's handlers, name and place. A press on `hitArea`, in the canvas's points, counts.
    void follow(const ui::Control& control, const QRectF& hitArea);
    /// The control's place is gone: hides it and ends what goes on with it.
    virtual void dismiss();
    /// What a press does.
    virtual void activate() = 0;

    const ui::Control& control() const { return control_; }

protected:
    explicit SceneControl(QWidget& canvas);

    bool hitButton(const QPoint& position) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent*) override {}

private:
    ui::Control control_;
    QRectF hitArea_;
};

} // namespace platform
