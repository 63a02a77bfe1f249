#pragma once

#include "app/AppDelegate.h"
#include "platform/ui/SceneHost.h"

namespace app {

/// The application: its delegate and its one scene.
class DriverManagerApp {
public:
    /// A window group whose content is a new model, asked for the extensions at once, and the screen that shows it.
    platform::ui::WindowGroup body() const;

    /// Runs the application until it is ended, by the person or the system; returns its exit status. Nothing of the
    /// command line is looked at.
    int main(int argc, char** argv);

private:
    AppDelegate appDelegate_;
};

} // namespace app
