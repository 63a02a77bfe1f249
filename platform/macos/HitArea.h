#pragma once

#include "platform/ui/Scene.h"

namespace platform {

/// Where a press counts for a control of `scene`: a menu's area reaches beyond its small indicator, never onto another
/// control; a button's is its own.
ui::Rect hitArea(const ui::Scene& scene, const ui::Control& control);

} // namespace platform
