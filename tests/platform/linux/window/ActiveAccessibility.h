#pragma once

namespace platform {

/// While one lives, the application tells what changes, as it does when assistive technology runs. Needs the
/// application.
class ActiveAccessibility {
public:
    ActiveAccessibility();
    ActiveAccessibility(const ActiveAccessibility&) = delete;
    ActiveAccessibility& operator=(const ActiveAccessibility&) = delete;
    ~ActiveAccessibility();
};

} // namespace platform
