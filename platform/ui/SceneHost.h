#pragma once

#include "platform/ui/Metrics.h"
#include "platform/ui/View.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>

// The second stage, for one layout and for the life of a window.

namespace platform::ui {

/// Lays out `view`, centered in a safe area of `size`, by default of the view's own size. A pure function; bodies of
/// observing views are evaluated once.
Scene layout(const View& view, std::optional<Size> size, const Metrics& metrics, EdgeInsets safeArea = {});

/// The scene of an application: a window with the builder's view. The builder is called each time the platform asks for
/// the content, but not when an observed object changes.
struct WindowGroup {
    std::function<View()> content;
};

/// The content of one window. It asks the window group for it once, on construction, and rebuilds the scene when an
/// observed object changes: once, at the end of the turn of the main loop. Main thread only.
class SceneHost {
public:
    /// Runs its argument once, at the end of the current turn of the main loop, never inside the call.
    using Schedule = std::function<void(std::function<void()>)>;
    /// Shows a new scene. Called for rebuilds, not for the first scene; scene() is still the old one during the call.
    using Show = std::function<void(const Scene&)>;

    /// `metrics` must outlive the host. Rebuilds that are scheduled when the host is destroyed do nothing.
    SceneHost(const WindowGroup& group, const Metrics& metrics, EdgeInsets safeArea, Schedule schedule, Show show);
    SceneHost(const SceneHost&) = delete;
    SceneHost& operator=(const SceneHost&) = delete;
    ~SceneHost();

    /// The scene shown last. Its size is the content's own.
    const Scene& scene() const;

private:
    struct State;
    std::shared_ptr<State> state_;
};

} // namespace platform::ui
