#pragma once

#include "platform/macos/Native.h"
#include "platform/ui/Scene.h"

#include <memory>

namespace platform {

class ImageStore;

/// Shows a scene: paints it, and keeps over it one native control per control, and one accessible object per text and
/// named image.
class SceneCanvas {
public:
    /// `images` outlives this.
    explicit SceneCanvas(const ImageStore& images);
    SceneCanvas(const SceneCanvas&) = delete;
    SceneCanvas& operator=(const SceneCanvas&) = delete;
    ~SceneCanvas();

    /// Shows `scene` in place of the one before. Controls are the same where their place is the same.
    void present(const ui::Scene& scene);

    /// An NSView, as long as this lives.
    Native view() const;

private:
    class State;

    std::unique_ptr<State> state_;
};

} // namespace platform
