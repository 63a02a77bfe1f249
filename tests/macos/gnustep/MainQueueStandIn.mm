#include "tests/macos/gnustep/StandIns.h"

#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>
#include <objc/runtime.h>

namespace {

std::function<void()>& told() {
    static std::function<void()> function;
    return function;
}

/// How much work waits.
std::size_t& waiting() {
    static std::size_t count = 0;
    return count;
}

void tell() {
    --waiting();
    if (told()) told()();
}

/// The modes that these stand for: GNUstep has a name for the common ones and no such modes.
NSArray* realModes(NSArray* const modes) {
    if (![modes containsObject:NSRunLoopCommonModes]) return modes;
    return @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ];
}

} // namespace

namespace standin {

bool isAtRest() {
    return waiting() == 0;
}

bool runMainQueue() {
    if (isAtRest()) return false;
    @autoreleasepool {
        [[NSRunLoop mainRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate distantPast]];
    }
    return true;
}

void whenWorkIsDone(std::function<void()> function) {
    told() = std::move(function);
}

} // namespace standin

/// Tells that work is done: it runs after the work.
@interface StandInTeller : NSObject
+ (StandInTeller*)teller;
@end

@implementation StandInTeller

+ (StandInTeller*)teller {
    static StandInTeller* const teller = [[self alloc] init];
    return teller;
}

- (void)tell {
    tell();
}

@end

@interface StandInWork : NSObject {
@public
    dispatch_function_t work_;
    void* context_;
}
@end

@implementation StandInWork

- (void)run {
    work_(context_);
}

@end

dispatch_queue_t dispatch_get_main_queue(void) {
    static char main;
    return reinterpret_cast<dispatch_queue_t>(&main);
}

void dispatch_async_f(dispatch_queue_t, void* context, dispatch_function_t work) {
    StandInWork* const posted = [[[StandInWork alloc] init] autorelease];
    posted->work_ = work;
    posted->context_ = context;
    [posted performSelectorOnMainThread:@selector(run) withObject:nil waitUntilDone:NO modes:@[ NSRunLoopCommonModes ]];
}

// GNUstep does what the main thread puts off at once if its loop does not run yet, and else after whatever the display
// has sent by then.

namespace {

using Perform = void (*)(id, SEL, SEL, id, BOOL, NSArray*);

Perform& original() {
    static Perform perform;
    return perform;
}

void putOff(id self, SEL command, SEL selector, id object, BOOL wait, NSArray* modes) {
    if (wait) return original()(self, command, selector, object, wait, modes);
    static NSUInteger place = 0; // what was put off first is done first
    ++waiting();
    NSRunLoop* const loop = [NSRunLoop mainRunLoop];
    NSArray* const real = realModes(modes);
    [loop performSelector:selector target:self argument:object order:++place modes:real];
    [loop performSelector:@selector(tell) target:[StandInTeller teller] argument:nil order:++place modes:real];
}

} // namespace

@implementation NSObject (PutOff)

+ (void)load {
    const SEL perform = @selector(performSelectorOnMainThread:withObject:waitUntilDone:modes:);
    const Method method = class_getInstanceMethod(self, perform);
    original() = reinterpret_cast<Perform>(method_setImplementation(method, reinterpret_cast<IMP>(putOff)));
}

@end
