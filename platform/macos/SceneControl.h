#pragma once

#include "platform/macos/Native.h"
#include "platform/ui/Scene.h"

#include <memory>

namespace platform {

class ImageStore;

/// What a person or assistive technology presses: a native control, itself invisible, over what the canvas paints for
/// a control of the scene. It lives as long as its place does and takes over the control of each new scene; when it is
/// destroyed it leaves its canvas, and what goes on with it ends. Main thread only.
class SceneControl {
public:
    SceneControl(const SceneControl&) = delete;
    SceneControl& operator=(const SceneControl&) = delete;
    virtual ~SceneControl();

    /// An NSControl, as long as this lives.
    virtual Native view() const = 0;
    /// Takes over the control's handlers, name and place. A press on `hitArea`, in the scene's points, counts.
    void follow(const ui::Control& control, const ui::Rect& hitArea);

    /// The one that was taken over last.
    const ui::Control& control() const { return control_; }

    /// Gives the view keyboard focus.
    void takeFocus();
    /// Whether the view accepts focus that is offered now: not from a press, which leaves it where it is.
    bool acceptsFocus() const;

    /// The shape of the focus ring, in the view's points, and where it lies.
    void fillFocusRingMask() const;
    ui::Rect focusRingBounds() const;

protected:
    explicit SceneControl(const ImageStore& images) : images_{images} {}

    /// The control of a new scene was taken over.
    virtual void followed() {}
    const ImageStore& images() const { return images_; }

private:
    const ImageStore& images_;
    ui::Control control_;
    ui::Rect hitArea_;
    bool takesFocus_ = false;
};

// `images` outlives what is made.

/// For a push button. Runs the control's action: once for each press, counted when it is released inside.
std::unique_ptr<SceneControl> makeSceneButton(const ImageStore& images);

/// For a pull-down menu. Opens a menu of the control's items on a press. An open menu keeps the handlers that it was
/// opened with; it closes when the control's place is gone.
std::unique_ptr<SceneControl> makeSceneMenu(const ImageStore& images);

} // namespace platform
