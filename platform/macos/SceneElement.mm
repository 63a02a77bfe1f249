#include "platform/macos/SceneElement.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/NativeText.h"
#include "platform/macos/Retained.h"

#include <utility>

@interface KelvraSceneElement : NSAccessibilityElement {
@public
    NSView* canvas_; // nil once its scene is gone
    NSRect rect_;
}
@end

@implementation KelvraSceneElement

- (NSRect)accessibilityFrame {
    return [[canvas_ window] convertRectToScreen:[canvas_ convertRect:rect_ toView:nil]];
}

@end

namespace platform {

struct SceneElement::Element {
    Retained<KelvraSceneElement> native{[[KelvraSceneElement alloc] init]};
};

namespace {

/// Spoken at once, whatever has focus.
void announce(const id window, NSString* const text) {
    if (!window) return;
    NSAccessibilityPostNotificationWithUserInfo(
        window, NSAccessibilityAnnouncementRequestedNotification,
        @{NSAccessibilityAnnouncementKey : text,
          NSAccessibilityPriorityKey : @(NSAccessibilityPriorityHigh)});
}

} // namespace

SceneElement::SceneElement(const Native canvas) : element_{std::make_unique<Element>()} {
    KelvraSceneElement* const element = element_->native.get();
    element->canvas_ = static_cast<NSView*>(canvas);
    [element setAccessibilityParent:element->canvas_];
}

SceneElement::~SceneElement() {
    element_->native.get()->canvas_ = nil;
    [element_->native.get() setAccessibilityParent:nil];
}

void SceneElement::follow(const Kind kind, const std::string& name, const ui::Rect& rect) {
    KelvraSceneElement* const element = element_->native.get();
    NSString* const text = toNSString(name);
    element->rect_ = toNSRect(rect);
    if (kind == Kind::image) {
        [element setAccessibilityRole:NSAccessibilityImageRole];
        [element setAccessibilityLabel:text];
    } else {
        [element setAccessibilityRole:NSAccessibilityStaticTextRole];
        [element setAccessibilityValue:text];
    }
    const bool changed = std::exchange(name_, name) != name;
    if (!std::exchange(followed_, true) || !changed) return;
    NSAccessibilityPostNotification(element, NSAccessibilityValueChangedNotification);
    if (kind == Kind::announcedText) announce([element->canvas_ window], text);
}

Native SceneElement::element() const {
    return element_->native.get();
}

} // namespace platform
