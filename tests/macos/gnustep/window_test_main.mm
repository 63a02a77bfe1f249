#include "tests/macos/gnustep/Zombies.h"

#import <Foundation/NSDebug.h>

#include <gmock/gmock.h>

int main(int argc, char** argv) {
    macos_tests::haveZombies(argv);
    GSDebugAllocationActive(YES);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
