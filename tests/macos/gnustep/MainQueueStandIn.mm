#include "tests/macos/gnustep/StandIns.h"

#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>
#include <objc/runtime.h>

namespace {

std::function<void()>& told() {
    static std::function<void()> function;
    return function;
}

void tell() {
    if (told()) told()();
}

std::size_t& waiting() {
    static std::size_t count = 0;
    return count;
}

NSArray* commonModes() {
    return @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ];
}

} // namespace

namespace standin {

bool runMainQueue() {
    if (waiting() == 0) return false;
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
    --waiting();
    work_(context_);
}

@end

dispatch_queue_t dispatch_get_main_queue(void) {
    static char main;
    return reinterpret_cast<dispatch_queue_t>(&main);
}

void dispatch_async_f(dispatch_queue_t, void* context, dispatch_function_t work) {
    ++waiting();
    StandInWork* const posted = [[[StandInWork alloc] init] autorelease];
    posted->work_ = work;
    posted->context_ = context;
    [posted performSelectorOnMainThread:@selector(run) withObject:nil waitUntilDone:NO modes:@[ NSRunLoopCommonModes ]];
}

// GNUstep has a name for the common modes and no such modes, and does not put off what the main thread puts off before
// its loop runs.

namespace {

using Perform = void (*)(id, SEL, SEL, id, BOOL, NSArray*);

Perform& original() {
    static Perform perform;
    return perform;
}

void performInCommonModes(id self, SEL command, SEL selector, id object, BOOL wait, NSArray* modes) {
    if (wait || ![modes containsObject:NSRunLoopCommonModes])
        return original()(self, command, selector, object, wait, modes);
    static NSUInteger place = 0; // what was put off first is done first
    NSRunLoop* const loop = [NSRunLoop mainRunLoop];
    [loop performSelector:selector target:self argument:object order:++place modes:commonModes()];
    [loop performSelector:@selector(tell) target:[StandInTeller teller] argument:nil order:++place modes:commonModes()];
}

} // namespace

@implementation NSObject (CommonModes)

+ (void)load {
    const SEL perform = @selector(performSelectorOnMainThread:withObject:waitUntilDone:modes:);
    const Method method = class_getInstanceMethod(self, perform);
    original() =
        reinterpret_cast<Perform>(method_setImplementation(method, reinterpret_cast<IMP>(performInCommonModes)));
}

@end
