#pragma once

#include "platform/Application.h"

namespace app {

/// Closing the window quits the application.
class AppDelegate : public platform::NSApplicationDelegate {
public:
    bool applicationShouldTerminateAfterLastWindowClosed() override { return true; }
};

} // namespace app
