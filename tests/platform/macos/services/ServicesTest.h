#pragma once

#include "tests/macos/gnustep/ScriptedExtensions.h"
#include "tests/macos/gnustep/StandIns.h"

#import <Foundation/Foundation.h>

#include <gmock/gmock.h>

namespace platform {

/// Runs what waits in the main queue, and what that work adds, until nothing does.
inline void runMainQueue() {
    while (standin::runMainQueue()) {
    }
}

} // namespace platform
