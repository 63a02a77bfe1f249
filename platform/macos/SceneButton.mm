#include "platform/macos/SceneButton.h"

#include "platform/macos/CallbackGuard.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/Retained.h"

/// A button that is not seen: what is seen of it is painted below.
@interface KelvraSceneButton : NSButton {
@public
    platform::SceneButton* owner_; // nil once its place is gone
}
@end

@implementation KelvraSceneButton

- (BOOL)isFlipped {
    return YES;
}

- (void)drawRect:(NSRect)dirty {
}

- (BOOL)acceptsFirstResponder {
    return owner_ && owner_->acceptsFocus();
}

// A press may outlast its place, and the button with it.
- (void)mouseDown:(NSEvent*)event {
    const auto kept = platform::retain(self);
    [super mouseDown:event];
}

- (void)press:(id)sender {
    platform::guarded([&] {
        if (owner_) owner_->press();
    });
}

- (NSRect)focusRingMaskBounds {
    return owner_ ? platform::toNSRect(owner_->focusRingBounds()) : NSZeroRect;
}

- (void)drawFocusRingMask {
    if (owner_) owner_->fillFocusRingMask();
}

@end

namespace platform {

struct SceneButton::View {
    Retained<KelvraSceneButton> button{[[KelvraSceneButton alloc] initWithFrame:NSZeroRect]};
};

SceneButton::SceneButton(const ImageStore& images) : SceneControl{images}, view_{std::make_unique<View>()} {
    KelvraSceneButton* const button = view_->button.get();
    button->owner_ = this;
    [button setButtonType:NSButtonTypeMomentaryChange];
    [button setTitle:@""];
    [button setBordered:NO];
    [button setTransparent:YES];
    [button setTarget:button];
    [button setAction:@selector(press:)];
    [button setAccessibilityRole:NSAccessibilityButtonRole];
}

SceneButton::~SceneButton() {
    view_->button.get()->owner_ = nullptr;
}

Native SceneButton::view() const {
    return view_->button.get();
}

void SceneButton::dismiss() {
    view_->button.get()->owner_ = nullptr;
    SceneControl::dismiss();
}

void SceneButton::press() const {
    // A copy: the handler may bring a scene that replaces it.
    const auto run = std::get<ui::PushButton>(control().kind).action.run;
    if (run) run();
}

} // namespace platform
