#pragma once

#include "platform/ui/Metrics.h"
#include "platform/ui/View.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>

// The second stage, once and for as long as a window lives.

namespace platform::ui {

/// Lays `view` out, centered in a safe area of `size`, or of the view's own size if none is given. A pure function of
/// its arguments; bodies of observing views are evaluated once.
Scene layout(const View& view, std::optional<Size> size, const Metrics& metrics, EdgeInsets safeArea = {});

/// The scene of an application: a window that shows what the builder yields. The builder is called each time the
/// platform asks the scene for its content, and only then; a change of an observed object does not call it.
struct WindowGroup {
    std::function<View()> content;
};

/// The content of one window: asks the window group for it once, when it is made, and keeps its scene true to what it
/// observes. Any number of changes within one turn of the main loop cost one rebuild, at the end of that turn. Main
/// thread only.
class SceneHost {
public:
    /// Runs its argument once, at the end of the current turn of the main loop, never inside the call.
    using Schedule = std::function<void(std::function<void()>)>;
    /// Shows a new scene. Called for rebuilds, not for the first scene; the old scene is still the host's while it
    /// runs.
    using Show = std::function<void(const Scene&)>;

    /// `metrics` outlives the host. Rebuilds that are scheduled when the host goes away do nothing.
    SceneHost(const WindowGroup& group, const Metrics& metrics, EdgeInsets safeArea, Schedule schedule, Show show);
    SceneHost(const SceneHost&) = delete;
    SceneHost& operator=(const SceneHost&) = delete;
    ~SceneHost();

    /// The scene that was shown last; its size is the content's own, fixed.
    const Scene& scene() const;

private:
    struct State;
    std::shared_ptr<State> state_;
};

} // namespace platform::ui
