#pragma once

#include <cstddef>

namespace platform::fake {

/// Runs what the main queue holds, in order, together with what that work adds, until the queue is empty. Returns how
/// many pieces of work ran. Work runs in this call alone, on the thread that makes it.
std::size_t drainMainQueue();

/// How many pieces of work wait.
std::size_t mainQueueLength();

/// Drops what waits, unrun.
void resetMainQueue();

} // namespace platform::fake
