#pragma once

namespace simulator::settings {

/// From here on assistive technology finds each widget in the role that its property "role" names. To be called once.
void useAccessibility();

} // namespace simulator::settings
