#pragma once

#include "platform/ui/Scene.h"

#include <functional>
#include <string>
#include <vector>

// Scenes made by hand, as a layout would yield them.

namespace platform {

/// A black capsule at `rect` that runs `run`.
ui::SceneNode button(ui::Place place, ui::Rect rect, std::string name, std::function<void()> run);
/// A menu whose indicator, 10 by 16, has its top left at `origin`.
ui::SceneNode menu(ui::Place place, ui::Point origin, std::string name, std::vector<ui::MenuItem> items);
ui::SceneNode text(ui::Point origin, std::string text);
ui::SceneNode announcedText(ui::Point origin, std::string text);
ui::SceneNode namedImage(ui::Rect rect, std::string image, std::string name);
ui::MenuItem item(std::string title, std::function<void()> run);

/// 450 by 230.
ui::Scene scene(std::vector<ui::SceneNode> nodes);

/// The place of the `index`th control of the `row`th card.
ui::Place inCard(std::uint32_t row, std::uint32_t index);

} // namespace platform
