#import <Foundation/Foundation.h>
#import <Foundation/NSDebug.h>

#include <gmock/gmock.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

/// Starts the program anew with zombies on, unless they are: a message to an object of Objective-C that has gone ends
/// the program.
void haveZombies(char** const argv) {
    if (std::getenv("CRASH_ON_ZOMBIE")) return;
    setenv("NSZombieEnabled", "YES", 1);
    setenv("CRASH_ON_ZOMBIE", "YES", 1);
    execv("/proc/self/exe", argv);
    std::perror("zombies");
    std::exit(1);
}

} // namespace

int main(int argc, char** argv) {
    haveZombies(argv);
    GSDebugAllocationActive(YES);
    testing::InitGoogleMock(&argc, argv);
    @autoreleasepool {
        return RUN_ALL_TESTS();
    }
}
