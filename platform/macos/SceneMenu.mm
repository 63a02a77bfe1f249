#include "platform/macos/CallbackGuard.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/ImageStore.h"
#include "platform/macos/NativeText.h"
#include "platform/macos/Retained.h"
#include "platform/macos/SceneControl.h"

#include <functional>
#include <variant>

namespace platform {
class SceneMenu;
} // namespace platform

/// What choosing an item of an open menu does.
@interface KelvraMenuChoice : NSObject {
@public
    std::function<void()> run_;
}
- (void)choose:(id)sender;
@end

@implementation KelvraMenuChoice

- (void)choose:(id)sender {
    // A copy: the handler may bring a scene that takes the menu away.
    const auto run = run_;
    platform::guarded([&] {
        if (run) run();
    });
}

@end

/// A pull-down button that is not seen: what is seen of it is painted below.
@interface KelvraSceneMenu : NSPopUpButton <NSMenuDelegate> {
@public
    platform::SceneMenu* owner_; // nil once its place is gone
    bool isOpen_;
    // Itself, while its menu is open: whoever follows the menu, and tells what was chosen, comes back to the button.
    platform::Retained<NSObject> kept_;
}
@end

namespace platform {

namespace {

/// The first item of a pull-down menu is the button's title and is not offered.
void clear(NSMenu* const menu) {
    while ([menu numberOfItems] > 0)
        [menu removeItemAtIndex:0];
    [menu addItemWithTitle:@"" action:nullptr keyEquivalent:@""];
}

void offer(NSMenu* const menu, const ui::MenuItem& item, const ImageStore& images) {
    const Retained<KelvraMenuChoice> choice{[[KelvraMenuChoice alloc] init]};
    choice.get()->run_ = item.action.run;
    NSMenuItem* const native = [menu addItemWithTitle:toNSString(item.title)
                                               action:@selector(choose:)
                                        keyEquivalent:@""];
    [native setTarget:choice.get()];
    // The item keeps what it stands for, and no target.
    [native setRepresentedObject:choice.get()];
    [native setImage:static_cast<NSImage*>(images.image(item.image))];
}

} // namespace

class SceneMenu final : public SceneControl {
public:
    explicit SceneMenu(const ImageStore& images) : SceneControl{images} {
        KelvraSceneMenu* const button = button_.get();
        button->owner_ = this;
        [button setBordered:NO];
        [button setTransparent:YES];
        [static_cast<NSPopUpButtonCell*>([button cell]) setArrowPosition:NSPopUpNoArrow];
        [button setAccessibilityRole:NSAccessibilityMenuButtonRole];
        [[button menu] setAutoenablesItems:NO];
        [[button menu] setDelegate:button];
    }
    SceneMenu(const SceneMenu&) = delete;
    SceneMenu& operator=(const SceneMenu&) = delete;
    ~SceneMenu() override {
        button_.get()->owner_ = nullptr;
        [[button_.get() menu] cancelTracking];
        [button_.get() removeFromSuperview];
    }

    Native view() const override { return button_.get(); }

    /// Makes the items of the menu those of the control, unless it is open.
    void fill() const {
        KelvraSceneMenu* const button = button_.get();
        if (button->isOpen_) return;
        clear([button menu]);
        for (const ui::MenuItem& item : std::get<ui::PullDownMenu>(control().kind).items)
            offer([button menu], item, images());
    }

protected:
    void followed() override { fill(); }

private:
    Retained<KelvraSceneMenu> button_{[[KelvraSceneMenu alloc] initWithFrame:NSZeroRect pullsDown:YES]};
};

std::unique_ptr<SceneControl> makeSceneMenu(const ImageStore& images) {
    return std::make_unique<SceneMenu>(images);
}

} // namespace platform

@implementation KelvraSceneMenu

- (BOOL)isFlipped {
    return YES;
}

- (void)drawRect:(NSRect)dirty {
}

- (BOOL)acceptsFirstResponder {
    return owner_ && owner_->acceptsFocus();
}

- (void)menuWillOpen:(NSMenu*)menu {
    isOpen_ = true;
    kept_ = platform::retain<NSObject>(self);
}

// What was chosen may not have been told yet: the button and its items stay as they are until the main loop goes on as
// usual, which is after that.
- (void)menuDidClose:(NSMenu*)menu {
    isOpen_ = false;
    [self performSelectorOnMainThread:@selector(settle)
                           withObject:nil
                        waitUntilDone:NO
                                modes:@[ NSDefaultRunLoopMode ]];
}

- (void)settle {
    if (isOpen_) return;
    platform::guarded([&] {
        if (owner_) owner_->fill();
    });
    kept_ = {};
}

- (void)dealloc {
    [[self menu] setDelegate:nil];
    [super dealloc];
}

- (NSRect)focusRingMaskBounds {
    return owner_ ? platform::toNSRect(owner_->focusRingBounds()) : NSZeroRect;
}

- (void)drawFocusRingMask {
    if (owner_) owner_->fillFocusRingMask();
}

@end
