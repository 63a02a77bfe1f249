#include "tests/macos/gnustep/StandIns.h"

#import <AppKit/AppKit.h>
#include <objc/runtime.h>

#include <utility>

// GNUstep opens and closes menus without telling anyone, and does not follow one that a key has opened until it closes.

namespace {

using Attach = void (*)(id, SEL, NSRect, NSView*);
using KeyDown = void (*)(id, SEL, NSEvent*);
using Resign = BOOL (*)(id, SEL);
using Dismiss = void (*)(id, SEL);

/// How GNUstep does it.
struct Originals {
    Attach attach;
    Dismiss dismiss;
    KeyDown keyDown;
    Resign resign;
};

Originals& original() {
    static Originals originals;
    return originals;
}

struct Tracking {
    NSMenu* open = nil;
    /// Whether the open menu is followed after a key has opened it, and is to close.
    bool isFollowed = false;
    bool isToClose = false;
    std::function<void()> onceClosed;
};

Tracking& tracking() {
    static Tracking state;
    return state;
}

void attach(NSPopUpButtonCell* self, SEL command, NSRect frame, NSView* view) {
    tracking().open = [self menu];
    [[[self menu] delegate] menuWillOpen:[self menu]];
    original().attach(self, command, frame, view);
}

void dismiss(NSPopUpButtonCell* self, SEL command) {
    original().dismiss(self, command);
    if (tracking().open != [self menu]) return;
    tracking().open = nil;
    [[[self menu] delegate] menuDidClose:[self menu]];
    if (const auto act = std::exchange(tracking().onceClosed, nullptr)) act();
}

void follow(NSPopUpButtonCell* cell) {
    tracking().isFollowed = true;
    while (tracking().open == [cell menu]) {
        @autoreleasepool {
            NSEvent* const event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                                      untilDate:[NSDate distantFuture]
                                                         inMode:NSEventTrackingRunLoopMode
                                                        dequeue:YES];
            if (std::exchange(tracking().isToClose, false))
                [cell dismissPopUp];
            else
                [NSApp sendEvent:event];
        }
    }
    tracking().isFollowed = false;
}

void keyDown(NSPopUpButton* self, SEL command, NSEvent* event) {
    original().keyDown(self, command, event);
    if (tracking().isFollowed || tracking().open != [self menu]) return;
    // The first item of a pull-down menu is not offered: a step downwards leads to the one below it.
    [[tracking().open menuRepresentation] setHighlightedItemIndex:0];
    follow([self cell]);
    [self setNeedsDisplay:YES];
}

// Who opened the menu may lose focus while it is open.
BOOL resign(NSPopUpButton* self, SEL command) {
    return tracking().isFollowed || original().resign(self, command);
}

template <typename Function>
Function exchange(Class type, SEL selector, Function replacement) {
    const Method method = class_getInstanceMethod(type, selector);
    return reinterpret_cast<Function>(method_setImplementation(method, reinterpret_cast<IMP>(replacement)));
}

} // namespace

namespace standin {

void announceMenus() {
    original().attach = exchange([NSPopUpButtonCell class], @selector(attachPopUpWithFrame:inView:), attach);
    original().dismiss = exchange([NSPopUpButtonCell class], @selector(dismissPopUp), dismiss);
    original().keyDown = exchange([NSPopUpButton class], @selector(keyDown:), keyDown);
    original().resign = exchange([NSPopUpButton class], @selector(resignFirstResponder), resign);
}

void* openMenu() {
    return tracking().open;
}

void onceMenuHasClosed(std::function<void()> act, std::function<void()> then) {
    tracking().onceClosed = [act = std::move(act), then = std::move(then)] {
        act();
        [[NSRunLoop mainRunLoop] runMode:NSEventTrackingRunLoopMode beforeDate:[NSDate distantPast]];
        then();
    };
}

} // namespace standin

@implementation NSMenu (Tracking)

// A press beside the menu, which closes it with nothing chosen.
- (void)cancelTracking {
    if (tracking().open != self) return;
    tracking().isToClose = tracking().isFollowed;
    [NSApp postEvent:[NSEvent mouseEventWithType:NSLeftMouseUp
                                        location:NSMakePoint(-10, -10)
                                   modifierFlags:0
                                       timestamp:0
                                    windowNumber:[[self window] windowNumber]
                                         context:nil
                                     eventNumber:0
                                      clickCount:1
                                        pressure:0]
             atStart:YES];
}

@end
