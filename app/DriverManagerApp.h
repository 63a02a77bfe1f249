#pragma once

#include "app/AppDelegate.h"
#include "platform/ui/SceneHost.h"

namespace app {

/// The application: its delegate and its one scene. Created once, on the main thread, and alive until main() returns
/// or, on a Mac, the process ends.
class DriverManagerApp {
public:
    /// A window group. Its content is the screen of a new model, which queries the extensions at once.
    platform::ui::WindowGroup body() const;

    /// Runs the application until it ends; returns the exit status. Ignores the command line.
    int main(int argc, char** argv);

private:
    AppDelegate appDelegate_;
};

} // namespace app
