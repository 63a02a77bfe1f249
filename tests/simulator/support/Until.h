#pragma once

#include <chrono>
#include <functional>

namespace simulator::tests {

/// Handles events until the condition holds; looks at it after each. Yields false if it does not hold in time.
[[nodiscard]] bool until(const std::function<bool()>& condition,
                         std::chrono::milliseconds patience = std::chrono::seconds{20});

/// Handles every event that is there already, the deferred deletions too.
void handleEvents();

} // namespace simulator::tests
