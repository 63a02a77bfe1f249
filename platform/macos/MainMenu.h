#pragma once

#include <string>

namespace platform {

/// Gives the application the menus that every application has: its own, Edit and Window.
void installMainMenu(const std::string& applicationName);

} // namespace platform
