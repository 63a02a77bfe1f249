#pragma once

#include "platform/ui/Scene.h"

#include <optional>

namespace platform::ui {

/// Where keyboard focus goes when `before` gives way to `after`: it stays where its control is still there; else it
/// goes to the next in reading order of the same row, else to the last before it in that row, else to the control
/// whose centre is nearest. Nothing if `after` has no controls.
std::optional<Place> focusAfter(const Scene& before, const Scene& after, const Place& focused);

} // namespace platform::ui
