#pragma once

#include "platform/ui/Scene.h"
#include "platform/ui/View.h"

#include <optional>
#include <ostream>
#include <string>

// A scene as text, for people and tests.

namespace platform::fake {

/// One line for each node, its content indented: `text 44,13.5 300x15 callout black "Woohoo"`. Numbers have up to three
/// decimals. Colors have components from 0 to 255, and "@" with the opacity if it is not 1.
std::string textOf(const ui::Scene& scene);
/// The parts of such a line: a color's name if it has one, a rectangle as `44,13.5 300x15`, a size as `300x15`.
std::string textOf(const ui::Color& color);
std::string textOf(const ui::Rect& rect);
std::string textOf(const ui::Size& size);

/// The scene of `view`, measured by FixedMetrics, in an area of this size; by default, of its own size.
std::string sceneOf(const ui::View& view, std::optional<ui::Size> size = std::nullopt, ui::EdgeInsets safeArea = {});

} // namespace platform::fake

// Printed by a failed comparison.
namespace platform::ui {

inline void PrintTo(const Color& color, std::ostream* out) {
    *out << fake::textOf(color);
}
inline void PrintTo(const Rect& rect, std::ostream* out) {
    *out << fake::textOf(rect);
}
inline void PrintTo(const Size& size, std::ostream* out) {
    *out << fake::textOf(size);
}

} // namespace platform::ui
