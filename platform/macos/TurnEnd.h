#pragma once

#include <functional>

namespace platform {

/// Runs `work` on the main thread after what is going on has returned, and after what was posted before; also while a
/// menu is open or a button is held down.
void atEndOfTurn(std::function<void()> work);

} // namespace platform
