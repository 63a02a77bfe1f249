#include "platform/macos/SceneCanvas.h"

#include "platform/macos/CallbackGuard.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/Retained.h"
#include "platform/macos/SceneControl.h"
#include "platform/macos/SceneElement.h"
#include "platform/macos/ScenePainter.h"
#include "platform/ui/Interaction.h"

#include <algorithm>
#include <utility>
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
    return takesFocus_ || !platform::isClicking();
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

@end

namespace platform {

namespace {

using Controls = std::vector<std::unique_ptr<SceneControl>>;

/// What assistive technology sees of a node that is no control.
struct Spoken {
    SceneElement::Kind kind;
    std::string name;
    ui::Rect rect;
};

/// Calls `control`, or `spoken`, for each node that has a voice, in reading order.
template <typename ControlSeen, typename SpokenSeen>
void read(const std::vector<ui::SceneNode>& nodes, const ControlSeen& control, const SpokenSeen& spoken) {
    for (const ui::SceneNode& node : nodes) {
        if (std::holds_alternative<ui::Control>(node.value)) control();
        if (const auto* clip = std::get_if<ui::Clip>(&node.value)) read(clip->content, control, spoken);
        if (const auto* text = std::get_if<ui::TextRun>(&node.value)) {
            const auto kind = text->announced ? SceneElement::Kind::announcedText : SceneElement::Kind::text;
            spoken(Spoken{kind, text->text, text->rect});
        }
        if (const auto* image = std::get_if<ui::ImageRun>(&node.value); image && !image->accessibleName.empty())
            spoken(Spoken{SceneElement::Kind::image, image->accessibleName, image->rect});
    }
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
        followControls(before);
        followElements();
        if (scene_ != before) [view_.get() setNeedsDisplay:YES];
    }

private:
    using Elements = std::vector<std::unique_ptr<SceneElement>>;

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

    void followControls(const ui::Scene& before) {
        const SceneControl* const focused = focusedControl();
        Controls followed;
        for (const ui::Control* control : ui::controlsOf(scene_)) {
            followed.push_back(takeControl(*control));
            followed.back()->follow(*control, ui::hitArea(scene_, *control));
        }
        const Controls gone = std::exchange(controls_, std::move(followed));
        chainControls();
        if (focused) moveFocus(before, *focused);
        for (const auto& control : gone)
            if (control) control->dismiss();
    }

    std::unique_ptr<SceneControl> takeControl(const ui::Control& control) {
        const auto same = std::find_if(controls_.begin(), controls_.end(), [&](const auto& candidate) {
            return candidate && candidate->control().place == control.place &&
                   candidate->control().kind.index() == control.kind.index();
        });
        if (same != controls_.end()) return std::move(*same);
        auto made = SceneControl::make(control, images_);
        [view_.get() addSubview:nativeOf(*made)];
        return made;
    }

    /// Keys go from control to control, in reading order.
    void chainControls() {
        NSView* last = view_.get();
        for (const auto& control : controls_) {
            [last setNextKeyView:nativeOf(*control)];
            last = nativeOf(*control);
        }
        [last setNextKeyView:view_.get()];
    }

    void moveFocus(const ui::Scene& before, const SceneControl& focused) {
        const auto place = ui::focusAfter(before, scene_, focused.control().place);
        const auto heir = std::find_if(controls_.begin(), controls_.end(), [&](const auto& control) {
            return place && control->control().place == *place;
        });
        if (heir == controls_.end()) return restFocus();
        if ([[view_.get() window] firstResponder] != nativeOf(**heir)) (*heir)->takeFocus();
    }

    /// Focus is on no control.
    void restFocus() {
        view_.get()->takesFocus_ = true;
        [[view_.get() window] makeFirstResponder:view_.get()];
        view_.get()->takesFocus_ = false;
    }

    const SceneControl* focusedControl() const {
        NSResponder* const focused = [[view_.get() window] firstResponder];
        const auto found = std::find_if(controls_.begin(), controls_.end(),
                                        [&](const auto& control) { return nativeOf(*control) == focused; });
        return found == controls_.end() ? nullptr : found->get();
    }

    void followElements() {
        const Retained<NSMutableArray> order{[[NSMutableArray alloc] init]};
        std::size_t texts = 0;
        std::size_t images = 0;
        auto control = controls_.begin();
        read(
            scene_.nodes, [&] { [order.get() addObject:nativeOf(**control++)]; },
            [&](const Spoken& spoken) {
                const bool isImage = spoken.kind == SceneElement::Kind::image;
                [order.get()
                    addObject:isImage ? follow(imageElements_, images++, spoken) : follow(texts_, texts++, spoken)];
            });
        texts_.resize(texts);
        imageElements_.resize(images);
        view_.get()->readingOrder_ = retain<NSArray>(order.get());
    }

    id follow(Elements& elements, const std::size_t index, const Spoken& spoken) {
        if (index == elements.size()) elements.push_back(std::make_unique<SceneElement>(view_.get()));
        elements[index]->follow(spoken.kind, spoken.name, spoken.rect);
        return static_cast<id>(elements[index]->element());
    }

    static NSView* nativeOf(const SceneControl& control) { return static_cast<NSView*>(control.view()); }

    const ImageStore& images_;
    Retained<KelvraSceneView> view_{[[KelvraSceneView alloc] initWithFrame:NSZeroRect]};
    ui::Scene scene_;
    Controls controls_;
    Elements texts_;
    Elements imageElements_;
};

SceneCanvas::SceneCanvas(const ImageStore& images) : state_{std::make_unique<State>(images)} {
}

SceneCanvas::~SceneCanvas() = default;

void SceneCanvas::present(const ui::Scene& scene) {
    @autoreleasepool {
        state_->present(scene);
    }
}

Native SceneCanvas::view() const {
    return state_->view();
}

} // namespace platform
