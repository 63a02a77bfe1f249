#pragma once

#include "platform/ui/Scene.h"

#include <optional>
#include <variant>
#include <vector>

// What every window has to know about a scene besides how it is painted, as pure functions: what is read and pressed,
// in which order, and what of it goes on when another scene takes its place. Pointers live as long as the scene does,
// unchanged.

namespace platform::ui {

/// What assistive technology comes to. An image is one where it has a name; what a control shows is its own.
using Readable = std::variant<const TextRun*, const ImageRun*, const Control*>;

/// All of it, in the order in which it is painted and read.
std::vector<Readable> readingOrder(const Scene& scene);
std::vector<Readable> readingOrder(Scene&&) = delete;

/// The controls alone, in reading order: the order of the Tab key.
std::vector<const Control*> controlsOf(const Scene& scene);
std::vector<const Control*> controlsOf(Scene&&) = delete;

/// For each member of the reading order of `after`, the index of the one in that of `before` that goes on as it; none
/// where it is new. A control goes on where one of its kind stands at its place; the nth text as the nth text, the nth
/// image as the nth image. No index comes twice.
std::vector<std::optional<std::size_t>> predecessors(const Scene& before, const Scene& after);

/// Where keyboard focus goes when `before` gives way to `after`: it stays where its control is still there; else it
/// goes to the next in reading order of the same row, else to the last before it in that row, else to the control
/// whose center is nearest. Nothing if `after` has no controls.
std::optional<Place> focusAfter(const Scene& before, const Scene& after, const Place& focused);

/// Where a press counts for a control of `scene`: a menu's area reaches beyond its small indicator, never onto another
/// control; a button's is its own.
Rect hitArea(const Scene& scene, const Control& control);

} // namespace platform::ui
