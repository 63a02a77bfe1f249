#pragma once

namespace platform::ui {
struct WindowGroup;
}

namespace platform {

/// What the application decides for the platform.
class NSApplicationDelegate {
public:
    NSApplicationDelegate() = default;
    NSApplicationDelegate(const NSApplicationDelegate&) = delete;
    NSApplicationDelegate& operator=(const NSApplicationDelegate&) = delete;
    virtual ~NSApplicationDelegate() = default;

    /// Asked each time that the last window was closed; a true answer ends the application with status 0.
    virtual bool applicationShouldTerminateAfterLastWindowClosed() = 0;
};

/// Runs the application on the calling thread, which becomes the main thread: opens the one window of `scene`, titled
/// `title`, shows its content and handles events until the application ends. The delegate outlives the call. Returns
/// the exit status, 0 after the last window was closed; on a Mac it does not return, because the system ends the
/// process itself, with that status. A signal ends the process as signals do, at any moment.
int runApplication(int argc, char** argv, const char* title, NSApplicationDelegate& delegate,
                   const ui::WindowGroup& scene);

} // namespace platform
