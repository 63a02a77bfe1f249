#include "tests/macos/gnustep/StandIns.h"

#import <AppKit/AppKit.h>
#include <objc/runtime.h>

// GNUstep opens and closes menus without telling anyone.

namespace {

using Attach = void (*)(id, SEL, NSRect, NSView*);
using Dismiss = void (*)(id, SEL);

Attach& originalAttach() {
    static Attach attach;
    return attach;
}

Dismiss& originalDismiss() {
    static Dismiss dismiss;
    return dismiss;
}

NSMenu*& open() {
    static NSMenu* menu = nil;
    return menu;
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
}

template <typename Function>
Function exchange(SEL selector, Function replacement) {
    const Method method = class_getInstanceMethod([NSPopUpButtonCell class], selector);
    return reinterpret_cast<Function>(method_setImplementation(method, reinterpret_cast<IMP>(replacement)));
}

} // namespace

namespace standin {

void announceMenus() {
    originalAttach() = exchange(@selector(attachPopUpWithFrame:inView:), attach);
    originalDismiss() = exchange(@selector(dismissPopUp), dismiss);
}

void* openMenu() {
    return open();
}

} // namespace standin

@implementation NSMenu (Tracking)

// A press beside the menu, which closes it with nothing chosen.
- (void)cancelTracking {
    if (open() != self) return;
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
