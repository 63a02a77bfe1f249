#pragma once

#include "platform/ui/Scene.h"

namespace platform::ui {

/// Where a press counts for a control of `scene`: a menu's area reaches beyond its small indicator, never onto another
/// control; a button's is its own.
Rect hitArea(const Scene& scene, const Control& control);

} // namespace platform::ui
