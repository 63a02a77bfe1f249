#include "platform/ui/ControlLook.h"

namespace platform::ui {

ControlLook lookOf(const Control& control) {
    for (const SceneNode& node : control.content) {
        if (const auto* clip = std::get_if<Clip>(&node.value)) return {clip->shape, clip->rect};
        if (const auto* indicator = std::get_if<MenuIndicator>(&node.value)) {
            return {ShapeKind::rectangle, indicator->rect};
        }
    }
    return {ShapeKind::rectangle, control.rect};
}

} // namespace platform::ui
