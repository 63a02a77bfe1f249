#include "platform/Application.h"

#include "platform/Bundle.h"
#include "platform/macos/AppKitMetrics.h"
#include "platform/macos/CallbackGuard.h"
#include "platform/macos/ImageStore.h"
#include "platform/macos/MainMenu.h"
#include "platform/macos/MainWindow.h"
#include "platform/macos/Retained.h"
#include "platform/posix/StandardStreams.h"
#include "platform/ui/SceneHost.h"

#import <AppKit/AppKit.h>

/// Hands what the application decides on to ours.
@interface KelvraApplicationDelegate : NSObject <NSApplicationDelegate> {
@public
    platform::NSApplicationDelegate* delegate_;
    platform::MainWindow* window_;
}
@end

@implementation KelvraApplicationDelegate

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    platform::guarded([&] { window_->show(); });
    [NSApp activateIgnoringOtherApps:YES];
}

- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)application {
    bool terminates = false;
    platform::guarded([&] { terminates = delegate_->applicationShouldTerminateAfterLastWindowClosed(); });
    return terminates;
}

- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application {
    return YES;
}

@end

/// Work that was put off.
@interface KelvraPostedWork : NSObject {
@public
    std::function<void()> work_;
}
- (void)run;
@end

@implementation KelvraPostedWork

- (void)run {
    platform::guarded(work_);
}

@end

namespace platform {

namespace {

/// Runs `work` after what is going on has returned, and after what was put off before; also while a menu is open or a
/// button is held down.
void atEndOfTurn(std::function<void()> work) {
    const Retained<KelvraPostedWork> posted{[[KelvraPostedWork alloc] init]};
    posted.get()->work_ = std::move(work);
    [posted.get() performSelectorOnMainThread:@selector(run)
                                   withObject:nil
                                waitUntilDone:NO
                                        modes:@[ NSRunLoopCommonModes ]];
}

void showAndRun(const char* title, NSApplicationDelegate& delegate, const ui::WindowGroup& scene) {
    const ImageStore images{NSBundle::mainBundle().resourcePath()};
    const AppKitMetrics metrics{images};
    MainWindow window{title, images};
    const ui::SceneHost host{scene, metrics, window.safeArea(), atEndOfTurn,
                             [&](const ui::Scene& next) { window.present(next); }};
    window.present(host.scene());
    const Retained<KelvraApplicationDelegate> native{[[KelvraApplicationDelegate alloc] init]};
    native.get()->delegate_ = &delegate;
    native.get()->window_ = &window;
    [NSApp setDelegate:native.get()];
    [NSApp run];
    [NSApp setDelegate:nil];
}

} // namespace

int runApplication(int, char**, const char* title, NSApplicationDelegate& delegate, const ui::WindowGroup& scene) {
    prepareStandardStreams();
    @autoreleasepool {
        NSApplication* const application = [NSApplication sharedApplication];
        [application setActivationPolicy:NSApplicationActivationPolicyRegular];
        installMainMenu(title);
        showAndRun(title, delegate, scene);
    }
    return 0;
}

} // namespace platform
