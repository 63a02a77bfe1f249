#include "tests/macos/gnustep/StandIns.h"

#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSDisplayServer.h>
#include <objc/runtime.h>
#include <sys/eventfd.h>

// GNUstep's main loop, about to wait, reads what the display has sent already and does what was put off, and waits all
// the same: an event that came of it would be seen with the next one from the display. Here a counter of the system,
// which the loop waits for too, ends such a wait.

@interface StandInAlarm : NSObject <RunLoopEvents> {
    int counter_;
}
- (void)ring;
@end

@implementation StandInAlarm

- (instancetype)init {
    self = [super init];
    counter_ = eventfd(0, 0);
    for (NSString* mode in @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ])
        // NOLINTNEXTLINE(performance-no-int-to-ptr): GNUstep takes a descriptor as a pointer
        [[NSRunLoop mainRunLoop] addEvent:reinterpret_cast<void*>(static_cast<std::intptr_t>(counter_))
                                     type:ET_RDESC
                                  watcher:self
                                  forMode:mode];
    return self;
}

- (void)ring {
    eventfd_write(counter_, 1);
}

- (void)receivedEvent:(void*)data type:(RunLoopEventType)type extra:(void*)extra forMode:(NSString*)mode {
    eventfd_t rings = 0;
    eventfd_read(counter_, &rings);
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

void endWait() {
    [alarm() ring];
}

} // namespace standin
