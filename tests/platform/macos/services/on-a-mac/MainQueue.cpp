#include "tests/macos/gnustep/StandIns.h"

#include <CoreFoundation/CoreFoundation.h>

namespace standin {

// The queue is the system's own here, and needs no more than to be run.
bool runMainQueue() {
    return CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0, true) == kCFRunLoopRunHandledSource;
}

} // namespace standin
