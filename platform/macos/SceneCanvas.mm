#include "platform/macos/SceneCanvas.h"

#include "platform/macos/CallbackGuard.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/MainWindow.h"
#include "platform/macos/NativeText.h"
#include "platform/macos/Retained.h"
#include "platform/macos/SceneControl.h"
#include "platform/macos/ScenePainter.h"
#include "platform/ui/Interaction.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

/// What paints a scene and holds its controls. Focus that is on no control rests here; neither keys, which go from
/// control to control, nor clicks bring it.
@interface KelvraSceneView : NSView {
@public
    std::function<void()> paint_;
    platform::Retained<NSArray> readingOrder_;
    bool takesFocus_;
}
@end

@implementation KelvraSceneView

- (BOOL)isFlipped {
    return YES;
}

- (BOOL)isOpaque {
    return YES;
}

- (BOOL)acceptsFirstResponder {
    return takesFocus_ || !platform::isPressed(self);
}

- (BOOL)canBecomeKeyView {
    return NO;
}

- (void)drawRect:(NSRect)dirty {
    platform::guarded([&] {
        if (paint_) paint_();
    });
}

// To assistive technology a control may be nothing and its cell all.
- (NSArray*)accessibilityChildren {
    return NSAccessibilityUnignoredChildren(readingOrder_.get());
}

- (id)accessibilityHitTest:(NSPoint)point {
    for (id member in readingOrder_.get())
        if (NSPointInRect(point, [member accessibilityFrame])) return NSAccessibilityUnignoredDescendant(member);
    return NSAccessibilityUnignoredAncestor(self);
}

@end

/// A text or an image of the scene.
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

namespace {

/// Spoken at once, whatever has focus.
void announce(const id window, NSString* const text) {
    if (!window) return;
    NSAccessibilityPostNotificationWithUserInfo(
        window, NSAccessibilityAnnouncementRequestedNotification,
        @{NSAccessibilityAnnouncementKey : text,
          NSAccessibilityPriorityKey : @(NSAccessibilityPriorityHigh)});
}

/// A text or an image of the scene as assistive technology sees it, the same object from scene to scene.
class SceneElement {
public:
    SceneElement(NSView* const canvas, NSString* const role) {
        native_.get()->canvas_ = canvas;
        [native_.get() setAccessibilityParent:NSAccessibilityUnignoredAncestor(canvas)];
        [native_.get() setAccessibilityRole:role];
    }
    SceneElement(const SceneElement&) = delete;
    SceneElement& operator=(const SceneElement&) = delete;
    // The element may be kept by the system for a while.
    ~SceneElement() {
        native_.get()->canvas_ = nil;
        [native_.get() setAccessibilityParent:nil];
    }

    id native() const { return native_.get(); }

    void follow(const ui::ImageRun& image) {
        [native_.get() setAccessibilityLabel:toNSString(image.accessibleName)];
        follow(image.accessibleName, image.rect);
    }

    void follow(const ui::TextRun& text) {
        NSString* const value = toNSString(text.text);
        [native_.get() setAccessibilityValue:value];
        if (follow(text.text, text.rect) && text.announced) announce([native_.get()->canvas_ window], value);
    }

private:
    /// Tells whether what is read is another than before.
    bool follow(const std::string& read, const ui::Rect& rect) {
        native_.get()->rect_ = toNSRect(rect);
        const auto before = std::exchange(read_, read);
        if (!before || before == read) return false;
        NSAccessibilityPostNotification(native_.get(), NSAccessibilityValueChangedNotification);
        return true;
    }

    Retained<KelvraSceneElement> native_{[[KelvraSceneElement alloc] init]};
    std::optional<std::string> read_;
};

/// What a member of the reading order is in the window.
using Item = std::variant<std::unique_ptr<SceneElement>, std::unique_ptr<SceneControl>>;

NSView* viewOf(const SceneControl& control) {
    return static_cast<NSView*>(control.view());
}

id accessibleOf(const Item& item) {
    return std::visit(
        ui::Cases{[](const std::unique_ptr<SceneElement>& element) { return static_cast<id>(element->native()); },
                  [](const std::unique_ptr<SceneControl>& control) { return static_cast<id>(viewOf(*control)); }},
        item);
}

} // namespace

class SceneCanvas::State {
public:
    explicit State(const ImageStore& images) : images_{images} {
        [view_.get() setFocusRingType:NSFocusRingTypeNone];
        view_.get()->paint_ = [this] { paint(); };
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    // The view may be kept by the system for a while.
    ~State() { view_.get()->paint_ = nullptr; }

    Native view() const { return view_.get(); }

    void present(const ui::Scene& scene) {
        const ui::Scene before = std::exchange(scene_, scene);
        if (scene_.size != before.size || scene_.safeArea != before.safeArea) resize();
        follow(before);
        if (scene_ != before) [view_.get() setNeedsDisplay:YES];
    }

private:
    /// The scene's points are those of the view, whose origin lies where the title bar ends.
    void resize() {
        const ui::EdgeInsets& safe = scene_.safeArea;
        [view_.get() setFrameSize:NSMakeSize(safe.leading + scene_.size.width + safe.trailing,
                                             safe.top + scene_.size.height + safe.bottom)];
        [view_.get() setBoundsOrigin:NSMakePoint(-safe.leading, -safe.top)];
    }

    void paint() const {
        [toNSColor(ui::windowGround) set];
        NSRectFill([view_.get() bounds]);
        ScenePainter{images_, ui::PixelGrid{[[view_.get() window] backingScaleFactor]}}.paint(scene_.nodes);
    }

    void follow(const ui::Scene& before) {
        const SceneControl* const focused = focusedControl();
        const auto readables = ui::readingOrder(scene_);
        const auto predecessors = ui::predecessors(before, scene_);
        std::vector<Item> old = std::exchange(items_, {}); // what is left of them goes when focus has moved
        for (std::size_t index = 0; index < readables.size(); ++index) {
            const auto same = predecessors[index];
            items_.push_back(same ? std::move(old[*same]) : make(readables[index]));
            follow(items_.back(), readables[index]);
        }
        chainItems();
        if (focused) moveFocus(before, focused->control().place);
    }

    Item make(const ui::Readable& readable) {
        const auto element = [&](NSString* const role) {
            return Item{std::make_unique<SceneElement>(view_.get(), role)};
        };
        return std::visit(ui::Cases{[&](const ui::TextRun*) { return element(NSAccessibilityStaticTextRole); },
                                    [&](const ui::ImageRun*) { return element(NSAccessibilityImageRole); },
                                    [&](const ui::Control* control) { return Item{make(*control)}; }},
                          readable);
    }

    std::unique_ptr<SceneControl> make(const ui::Control& control) {
        auto made = std::visit(ui::Cases{[&](const ui::PushButton&) { return makeSceneButton(images_); },
                                         [&](const ui::PullDownMenu&) { return makeSceneMenu(images_); }},
                               control.kind);
        [view_.get() addSubview:viewOf(*made)];
        return made;
    }

    void follow(Item& item, const ui::Readable& readable) {
        const auto element = [&](const auto* run) { std::get<std::unique_ptr<SceneElement>>(item)->follow(*run); };
        const auto control = [&](const ui::Control* followed) {
            std::get<std::unique_ptr<SceneControl>>(item)->follow(*followed, ui::hitArea(scene_, *followed));
        };
        std::visit(ui::Cases{element, control}, readable);
    }

    /// Assistive technology goes from item to item, keys from control to control.
    void chainItems() {
        const Retained<NSMutableArray> order{[[NSMutableArray alloc] init]};
        for (const Item& item : items_)
            [order.get() addObject:accessibleOf(item)];
        view_.get()->readingOrder_ = retain<NSArray>(order.get());
        NSView* last = view_.get();
        for (const SceneControl* control : controls()) {
            [last setNextKeyView:viewOf(*control)];
            last = viewOf(*control);
        }
        [last setNextKeyView:view_.get()];
    }

    void moveFocus(const ui::Scene& before, const ui::Place& focused) {
        const auto place = ui::focusAfter(before, scene_, focused);
        const auto all = controls();
        const auto heir = std::find_if(all.begin(), all.end(), [&](const SceneControl* control) {
            return place && control->control().place == *place;
        });
        if (heir == all.end()) return restFocus();
        if ([[view_.get() window] firstResponder] != viewOf(**heir)) (*heir)->takeFocus();
    }

    /// Focus is on no control.
    void restFocus() {
        view_.get()->takesFocus_ = true;
        [[view_.get() window] makeFirstResponder:view_.get()];
        view_.get()->takesFocus_ = false;
    }

    std::vector<SceneControl*> controls() const {
        std::vector<SceneControl*> found;
        for (const Item& item : items_)
            if (const auto* control = std::get_if<std::unique_ptr<SceneControl>>(&item))
                found.push_back(control->get());
        return found;
    }

    const SceneControl* focusedControl() const {
        NSResponder* const focused = [[view_.get() window] firstResponder];
        const auto all = controls();
        const auto found =
            std::find_if(all.begin(), all.end(), [&](const auto* control) { return viewOf(*control) == focused; });
        return found == all.end() ? nullptr : *found;
    }

    const ImageStore& images_;
    Retained<KelvraSceneView> view_{[[KelvraSceneView alloc] initWithFrame:NSZeroRect]};
    ui::Scene scene_;
    std::vector<Item> items_;
};

SceneCanvas::SceneCanvas(const ImageStore& images) : state_{std::make_unique<State>(images)} {
}

SceneCanvas::~SceneCanvas() = default;

void SceneCanvas::present(const ui::Scene& scene) {
    state_->present(scene);
}

Native SceneCanvas::view() const {
    return state_->view();
}

} // namespace platform
