#include "tests/macos/gnustep/StandIns.h"

#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSDisplayServer.h>
#include <objc/runtime.h>
#include <unistd.h>

// GNUstep's main loop, about to wait, reads what the display has sent already, and waits all the same: what came would
// be seen with the next thing that comes. Here a byte in a pipe, which the loop waits for too, ends such a wait.

@interface StandInAlarm : NSObject <RunLoopEvents> {
    int pipe_[2];
}
- (void)ring;
@end

@implementation StandInAlarm

- (instancetype)init {
    self = [super init];
    if (!self || pipe(pipe_) != 0) return nil;
    for (NSString* mode in @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ])
        [[NSRunLoop mainRunLoop] addEvent:reinterpret_cast<void*>(static_cast<std::intptr_t>(pipe_[0]))
                                     type:ET_RDESC
                                  watcher:self
                                  forMode:mode];
    return self;
}

- (void)ring {
    const char byte = 0;
    static_cast<void>(write(pipe_[1], &byte, 1) == 1);
}

- (void)receivedEvent:(void*)data type:(RunLoopEventType)type extra:(void*)extra forMode:(NSString*)mode {
    char byte = 0;
    static_cast<void>(read(pipe_[0], &byte, 1) == 1);
}

@end

namespace {

StandInAlarm* alarm() {
    static StandInAlarm* const alarm = [[StandInAlarm alloc] init];
    return alarm;
}

NSUInteger waitingEvents(const id server) {
    return [[server valueForKey:@"event_queue"] count];
}

BOOL shouldBlock(id self, SEL, BOOL* trigger) {
    const NSUInteger before = waitingEvents(self);
    [self receivedEvent:nullptr type:ET_RDESC extra:nullptr forMode:nil];
    if (waitingEvents(self) != before) [alarm() ring];
    *trigger = NO;
    return YES;
}

} // namespace

namespace standin {

void attendToDisplay() {
    alarm();
    const Method method = class_getInstanceMethod([GSCurrentServer() class], @selector(runLoopShouldBlock:));
    method_setImplementation(method, reinterpret_cast<IMP>(shouldBlock));
}

} // namespace standin
