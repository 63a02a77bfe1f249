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

Attach& originalAttach() {
    static Attach attach;
    return attach;
}

Dismiss& originalDismiss() {
    static Dismiss dismiss;
    return dismiss;
}

KeyDown& originalKeyDown() {
    static KeyDown keyDown;
    return keyDown;
}

Resign& originalResign() {
    static Resign resign;
    return resign;
}

NSMenu*& open() {
    static NSMenu* menu = nil;
    return menu;
}

/// Whether the menu that is open is followed after a key has opened it, and is to close.
bool& isFollowed() {
    static bool followed = false;
    return followed;
}

bool& isToClose() {
    static bool toClose = false;
    return toClose;
}

std::function<void()>& onceClosed() {
    static std::function<void()> function;
    return function;
}

void attach(NSPopUpButtonCell* self, SEL command, NSRect frame, NSView* view) {
    open() = [self menu];
    [[[self menu] delegate] menuWillOpen:[self menu]];
    originalAttach()(self, command, frame, view);
}

void dismiss(NSPopUpButtonCell* self, SEL command) {
    originalDismiss()(self, command);
    if (open() != [self menu]) return;
    open() = nil;
    [[[self menu] delegate] menuDidClose:[self menu]];
    if (const auto act = std::exchange(onceClosed(), nullptr)) act();
}

void follow(NSPopUpButtonCell* cell) {
    isFollowed() = true;
    while (open() == [cell menu]) {
        @autoreleasepool {
            NSEvent* const event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                                      untilDate:[NSDate distantFuture]
                                                         inMode:NSEventTrackingRunLoopMode
                                                        dequeue:YES];
            if (std::exchange(isToClose(), false))
                [cell dismissPopUp];
            else
                [NSApp sendEvent:event];
        }
    }
    isFollowed() = false;
}

void keyDown(NSPopUpButton* self, SEL command, NSEvent* event) {
    originalKeyDown()(self, command, event);
    if (isFollowed() || open() != [self menu]) return;
    // The first item of a pull-down menu is not offered: a step downwards leads to the one below it.
    [[open() menuRepresentation] setHighlightedItemIndex:0];
    follow([self cell]);
    [self setNeedsDisplay:YES];
}

// Who opened the menu may lose focus while it is open.
BOOL resign(NSPopUpButton* self, SEL command) {
    return isFollowed() || originalResign()(self, command);
}

template <typename Function>
Function exchange(Class type, SEL selector, Function replacement) {
    const Method method = class_getInstanceMethod(type, selector);
    return reinterpret_cast<Function>(method_setImplementation(method, reinterpret_cast<IMP>(replacement)));
}

} // namespace

namespace standin {

void announceMenus() {
    originalAttach() = exchange([NSPopUpButtonCell class], @selector(attachPopUpWithFrame:inView:), attach);
    originalDismiss() = exchange([NSPopUpButtonCell class], @selector(dismissPopUp), dismiss);
    originalKeyDown() = exchange([NSPopUpButton class], @selector(keyDown:), keyDown);
    originalResign() = exchange([NSPopUpButton class], @selector(resignFirstResponder), resign);
}

void* openMenu() {
    return open();
}

void onceMenuHasClosed(std::function<void()> act, std::function<void()> then) {
    onceClosed() = [act = std::move(act), then = std::move(then)] {
        act();
        [[NSRunLoop mainRunLoop] runMode:NSEventTrackingRunLoopMode beforeDate:[NSDate distantPast]];
        then();
    };
}

} // namespace standin

@implementation NSMenu (Tracking)

// A press beside the menu, which closes it with nothing chosen.
- (void)cancelTracking {
    if (open() != self) return;
    isToClose() = isFollowed();
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
