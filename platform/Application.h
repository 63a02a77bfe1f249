#pragma once

namespace platform::ui {
struct WindowGroup;
}

namespace platform {

/// The application's decisions for the platform.
class NSApplicationDelegate {
public:
    NSApplicationDelegate() = default;
    NSApplicationDelegate(const NSApplicationDelegate&) = delete;
    NSApplicationDelegate& operator=(const NSApplicationDelegate&) = delete;
    virtual ~NSApplicationDelegate() = default;

    /// Called each time the last window has closed; true ends the application with status 0.
    virtual bool applicationShouldTerminateAfterLastWindowClosed() = 0;
};

/// Runs the application on the calling thread, the main thread: opens the window of `scene` and handles events until
/// the application ends. The delegate must outlive the call. Returns the exit status, 0 after the last window has
/// closed. On a Mac, it does not return: the system ends the process with that status. Signals act as by default.
int runApplication(int argc, char** argv, const char* title, NSApplicationDelegate& delegate,
                   const ui::WindowGroup& scene);

} // namespace platform
