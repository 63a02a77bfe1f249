#include "platform/macos/CallbackGuard.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/Retained.h"
#include "platform/macos/SceneControl.h"

#include <variant>

namespace platform {
class SceneButton;
} // namespace platform

/// A button that is not seen: what is seen of it is painted below.
@interface KelvraSceneButton : NSButton {
@public
    platform::SceneButton* owner_; // nil once its place is gone
}
- (void)press:(id)sender;
@end

namespace platform {

class SceneButton final : public SceneControl {
public:
    explicit SceneButton(const ImageStore& images) : SceneControl{images} {
        KelvraSceneButton* const button = button_.get();
        button->owner_ = this;
        [button setButtonType:NSButtonTypeMomentaryChange];
        [button setTitle:@""];
        [button setBordered:NO];
        [button setTransparent:YES];
        [button setTarget:button];
        [button setAction:@selector(press:)];
        [button setAccessibilityRole:NSAccessibilityButtonRole];
    }
    SceneButton(const SceneButton&) = delete;
    SceneButton& operator=(const SceneButton&) = delete;
    ~SceneButton() override {
        button_.get()->owner_ = nullptr;
        [button_.get() removeFromSuperview];
    }

    Native view() const override { return button_.get(); }

    void press() const {
        // A copy: the handler may bring a scene that replaces it.
        const auto run = std::get<ui::PushButton>(control().kind).action.run;
        if (run) run();
    }

private:
    Retained<KelvraSceneButton> button_{[[KelvraSceneButton alloc] initWithFrame:NSZeroRect]};
};

std::unique_ptr<SceneControl> makeSceneButton(const ImageStore& images) {
    return std::make_unique<SceneButton>(images);
}

} // namespace platform

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
