#pragma once

namespace simulator::settings {

/// Has assistive technology take the window, its lists, their items and its question for what they are.
void useRoles();

} // namespace simulator::settings
