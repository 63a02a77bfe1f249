#pragma once

namespace platform {

/// While one lives, assistive technology sees the window's scene: its texts, images and controls in reading order,
/// each with its role, name and place on the screen, and the actions of the controls.
class SceneAccessibility {
public:
    SceneAccessibility();
    SceneAccessibility(const SceneAccessibility&) = delete;
    SceneAccessibility& operator=(const SceneAccessibility&) = delete;
    ~SceneAccessibility();
};

} // namespace platform
