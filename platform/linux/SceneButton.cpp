#include "platform/linux/SceneButton.h"

namespace platform {

void SceneButton::activate() {
    // A copy: the handler may bring a scene that replaces it.
    const auto run = control().action.run;
    if (run) run();
}

} // namespace platform
