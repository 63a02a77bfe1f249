#include "tests/macos/gnustep/StandIns.h"

#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>
#include <objc/runtime.h>

#include <utility>

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

/// A piece of work, and what is told once it is done.
@interface StandInWork : NSObject {
@public
    std::function<void()> work_;
}
@end

@implementation StandInWork

- (void)run {
    work_();
    --waiting();
    if (told()) told()();
}

@end

namespace {

/// Has the main loop do the work in one of these modes. What was put off first is done first.
void doLater(std::function<void()> work, NSArray* const modes) {
    static NSUInteger place = 0;
    ++waiting();
    StandInWork* const posted = [[[StandInWork alloc] init] autorelease];
    posted->work_ = std::move(work);
    [[NSRunLoop mainRunLoop] performSelector:@selector(run)
                                      target:posted
                                    argument:nil
                                       order:++place
                                       modes:realModes(modes)];
}

} // namespace

dispatch_queue_t dispatch_get_main_queue() {
    static char main;
    return reinterpret_cast<dispatch_queue_t>(&main);
}

void dispatch_async_f(dispatch_queue_t, void* context, dispatch_function_t work) {
    doLater([=] { work(context); }, @[ NSRunLoopCommonModes ]);
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
    [self retain];
    [object retain];
    const auto perform = [=] {
        [self performSelector:selector withObject:object];
        [object release];
        [self release];
    };
    doLater(perform, modes);
}

} // namespace

@implementation NSObject (PutOff)

+ (void)load {
    const SEL perform = @selector(performSelectorOnMainThread:withObject:waitUntilDone:modes:);
    const Method method = class_getInstanceMethod(self, perform);
    original() = reinterpret_cast<Perform>(method_setImplementation(method, reinterpret_cast<IMP>(putOff)));
}

@end
