#pragma once

#include "platform/macos/Native.h"
#include "platform/ui/Scene.h"

#include <memory>
#include <string>

namespace platform {

class ImageStore;

/// A titled window as large as its scene, which nobody can resize, in the color scheme that the scene prefers. The
/// scene runs on under the title bar.
class MainWindow {
public:
    /// `images` outlives this.
    MainWindow(const std::string& title, const ImageStore& images);
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;
    ~MainWindow();

    /// What the title bar takes of the window's content.
    ui::EdgeInsets safeArea() const;
    /// Shows `scene` in place of the one before.
    void present(const ui::Scene& scene);
    /// Brings the window to the front, in the middle of the screen.
    void show();

private:
    struct State;

    std::unique_ptr<State> state_;
};

/// Whether the window of an NSView is handling a press, from when a button of the mouse goes down to its release.
bool isPressed(Native view);

} // namespace platform
