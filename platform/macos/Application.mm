#include "platform/Application.h"

#include "platform/Bundle.h"
#include "platform/macos/AppKitMetrics.h"
#include "platform/macos/CallbackGuard.h"
#include "platform/macos/ImageStore.h"
#include "platform/macos/MainMenu.h"
#include "platform/macos/MainWindow.h"
#include "platform/macos/Retained.h"
#include "platform/macos/TurnEnd.h"
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

namespace platform {

namespace {

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
