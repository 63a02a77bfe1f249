#include "tests/macos/gnustep/StandIns.h"

#import <Foundation/Foundation.h>
#import <Foundation/NSDebug.h>
#include <objc/runtime.h>

namespace standin {

std::map<std::string, long> liveObjects() {
    std::map<std::string, long> alive;
    for (Class* type = GSDebugAllocationClassList(); *type; ++type)
        if (const long count = GSDebugAllocationCount(*type); count != 0) alive[class_getName(*type)] = count;
    return alive;
}

} // namespace standin
