#pragma once

#include "platform/ui/Metrics.h"
#include "platform/ui/Scene.h"
#include "platform/ui/View.h"

#include <optional>

namespace platform::ui {

/// Lays `view` out, centred in a safe area of `size`, or of the view's own size if none is given. A pure function of
/// its arguments; bodies of observing views are evaluated once.
Scene layout(const View& view, std::optional<Size> size, const Metrics& metrics, EdgeInsets safeArea = {});

} // namespace platform::ui
