#include "platform/macos/SceneControl.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/MainWindow.h"
#include "platform/macos/NativeText.h"
#include "platform/macos/ScenePainter.h"
#include "platform/ui/Painting.h"

namespace platform {

SceneControl::~SceneControl() = default;

void SceneControl::follow(const ui::Control& control, const ui::Rect& hitArea) {
    const bool ringMoves = hitArea != hitArea_ || ui::lookOf(control) != ui::lookOf(control_);
    control_ = control;
    hitArea_ = hitArea;
    auto* const native = static_cast<NSControl*>(view());
    [native setFrame:toNSRect(hitArea)];
    [native setAccessibilityLabel:toNSString(control.accessibleName)];
    if (ringMoves) [native noteFocusRingMaskChanged];
    followed();
}

void SceneControl::takeFocus() {
    auto* const native = static_cast<NSView*>(view());
    takesFocus_ = true;
    [[native window] makeFirstResponder:native];
    takesFocus_ = false;
}

// While something is pressed a rebuild may give focus, too.
bool SceneControl::acceptsFocus() const {
    return takesFocus_ || !isPressed(view());
}

void SceneControl::fillFocusRingMask() const {
    [NSGraphicsContext saveGraphicsState];
    NSAffineTransform* const toScene = [NSAffineTransform transform];
    [toScene translateXBy:-hitArea_.x yBy:-hitArea_.y];
    [toScene concat];
    ScenePainter{images_, ui::PixelGrid{[[static_cast<NSView*>(view()) window] backingScaleFactor]}}.fillLook(control_);
    [NSGraphicsContext restoreGraphicsState];
}

ui::Rect SceneControl::focusRingBounds() const {
    ui::Rect look = ui::lookOf(control_).rect;
    look.x -= hitArea_.x;
    look.y -= hitArea_.y;
    return look;
}

} // namespace platform
