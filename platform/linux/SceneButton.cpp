#include "platform/linux/SceneButton.h"

namespace platform {

void SceneButton::activate() {
    // A copy: the handler may bring a scene that replaces it.
    const auto run = std::get<ui::PushButton>(control().kind).action.run;
    if (run) run();
}

} // namespace platform
