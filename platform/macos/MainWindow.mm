#include "platform/macos/MainWindow.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/NativeText.h"
#include "platform/macos/Retained.h"
#include "platform/macos/SceneCanvas.h"

#include <optional>
#include <utility>

/// Knows that it is pressed: the event may stay the current one for long after.
@interface KelvraWindow : NSWindow {
@public
    bool isPressed_;
}
@end

@implementation KelvraWindow

- (void)sendEvent:(NSEvent*)event {
    const bool before = isPressed_;
    isPressed_ = before || [event type] == NSEventTypeLeftMouseDown;
    @try {
        [super sendEvent:event];
    } @finally {
        isPressed_ = before;
    }
}

@end

namespace platform {

namespace {

constexpr NSWindowStyleMask style = NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                    NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskFullSizeContentView;

Retained<NSWindow> makeWindow(const std::string& title) {
    Retained<NSWindow> window{[[KelvraWindow alloc] initWithContentRect:NSMakeRect(0, 0, 100, 100)
                                                              styleMask:style
                                                                backing:NSBackingStoreBuffered
                                                                  defer:NO]};
    [window.get() setReleasedWhenClosed:NO];
    [window.get() setTitle:toNSString(title)];
    [window.get() setTitlebarAppearsTransparent:YES];
    // The canvas says where keys go.
    [window.get() setAutorecalculatesKeyViewLoop:NO];
    // Every start is a first start: nothing is kept of a window.
    [window.get() setRestorable:NO];
    return window;
}

/// None is the desktop's.
NSAppearance* appearanceOf(const std::optional<ui::ColorScheme> scheme) {
    return scheme == ui::ColorScheme::light ? [NSAppearance appearanceNamed:NSAppearanceNameAqua] : nil;
}

} // namespace

struct MainWindow::State {
    State(const std::string& title, const ImageStore& images) : window{makeWindow(title)}, canvas{images} {
        auto* const view = static_cast<NSView*>(canvas.view());
        [window.get() setContentView:view];
        [window.get() setInitialFirstResponder:view];
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() {
        [window.get() orderOut:nil];
        [window.get() setContentView:nil];
    }

    Retained<NSWindow> window;
    SceneCanvas canvas;
    ui::Size size;
    std::optional<ui::ColorScheme> colorScheme;
};

MainWindow::MainWindow(const std::string& title, const ImageStore& images) {
    @autoreleasepool {
        state_ = std::make_unique<State>(title, images);
    }
}

MainWindow::~MainWindow() {
    @autoreleasepool {
        state_.reset();
    }
}

ui::EdgeInsets MainWindow::safeArea() const {
    NSWindow* const window = state_->window.get();
    return {.top = [[window contentView] frame].size.height - [window contentLayoutRect].size.height};
}

void MainWindow::present(const ui::Scene& scene) {
    @autoreleasepool {
        if (std::exchange(state_->colorScheme, scene.preferredColorScheme) != scene.preferredColorScheme)
            [state_->window.get() setAppearance:appearanceOf(scene.preferredColorScheme)];
        if (scene.size != state_->size) {
            state_->size = scene.size;
            [state_->window.get() setContentSize:NSMakeSize(scene.size.width, scene.safeArea.top + scene.size.height)];
        }
        state_->canvas.present(scene);
    }
}

bool isPressed(const Native view) {
    NSWindow* const window = [static_cast<NSView*>(view) window];
    return [window isKindOfClass:[KelvraWindow class]] && static_cast<KelvraWindow*>(window)->isPressed_;
}

void MainWindow::show() {
    [state_->window.get() center];
    [state_->window.get() makeKeyAndOrderFront:nil];
}

} // namespace platform
