#pragma once

#include "platform/ui/Scene.h"

#include <optional>
#include <variant>
#include <vector>

// What every window needs to know about a scene, except for painting, as pure functions: what can be read and pressed,
// in which order, and what stays when another scene replaces it. Pointers are valid as long as the scene lives
// unchanged.

namespace platform::ui {

/// What assistive technology reads: texts and controls, and images with a name. A control's content is not included.
using Readable = std::variant<const TextRun*, const ImageRun*, const Control*>;

/// All of it, in painting and reading order.
std::vector<Readable> readingOrder(const Scene& scene);
std::vector<Readable> readingOrder(Scene&&) = delete;

/// Only the controls, in reading order, which is the order of the Tab key.
std::vector<const Control*> controlsOf(const Scene& scene);
std::vector<const Control*> controlsOf(Scene&&) = delete;

/// For each member of the reading order of `after`, the index of its predecessor in that of `before`; none if it is
/// new. A control's predecessor has the same kind and place; that of the nth text or image is the nth text or image.
/// Each index occurs at most once.
std::vector<std::optional<std::size_t>> predecessors(const Scene& before, const Scene& after);

/// Where keyboard focus goes when `after` replaces `before`: it stays on its control; if that is gone, it goes to the
/// next control of the same row, else to the last one before it in that row, else to the control with the nearest
/// center. None if `after` has no controls.
std::optional<Place> focusAfter(const Scene& before, const Scene& after, const Place& focused);

/// Where a press on a control of `scene` counts: the area of a menu is larger than its indicator but does not cover
/// other controls; that of a button is its own.
Rect hitArea(const Scene& scene, const Control& control);

} // namespace platform::ui
