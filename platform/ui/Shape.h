#pragma once

#include "platform/ui/View.h"

namespace platform::ui {

/// The largest circle in the area offered, centred.
struct Circle {
    /// Its outline, the line centred on the circle.
    View stroke(Color color, double lineWidth = 1) const;
};

/// A rectangle with round ends, for clipping.
struct Capsule {};

} // namespace platform::ui
