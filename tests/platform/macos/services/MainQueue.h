#pragma once

#include "tests/macos/gnustep/StandIns.h"

#include <gtest/gtest.h>

namespace platform {

/// Runs what waits in the main queue, and what that work adds, until nothing does. Fails where that has no end.
inline void runMainQueue() {
    constexpr int enough = 10'000;
    for (int turns = 0; standin::runMainQueue(); ++turns)
        ASSERT_LT(turns, enough) << "something waits in the main queue, and is not run";
}

} // namespace platform
