#pragma once

#include "platform/ui/Scene.h"

namespace platform::ui {

/// What is seen of a control, which may be less than its rectangle: a focus ring goes around it.
struct ControlLook {
    ShapeKind shape = ShapeKind::rectangle;
    Rect rect;
    friend bool operator==(const ControlLook&, const ControlLook&) = default;
};

ControlLook lookOf(const Control& control);

} // namespace platform::ui
