#pragma once

#include "platform/ui/SceneHost.h"
#include "tests/support/FixedMetrics.h"

#include <functional>
#include <string>
#include <vector>

namespace platform::fake {

/// A window that draws nothing: it shows the scene of a window group with fixed metrics, and a test presses its
/// controls and ends the turns of its main loop.
class FakeWindow {
public:
    explicit FakeWindow(const ui::WindowGroup& group, ui::EdgeInsets safeArea = {});

    const ui::Scene& scene() const { return host_.scene(); }
    /// Every text outside a control, in order.
    std::vector<std::string> texts() const;
    /// The accessible names of the controls, in reading order.
    std::vector<std::string> controls() const;

    /// Presses the button with this accessible name; throws std::out_of_range if there is none.
    void press(const std::string& accessibleName);
    /// Chooses an item of the menu with this accessible name; throws std::out_of_range if there is none.
    void choose(const std::string& accessibleName, const std::string& item);

    /// Ends the current turn of the main loop: runs the work scheduled for it.
    void endTurn();
    /// The number of rebuilds shown.
    int rebuilds() const { return rebuilds_; }

private:
    const ui::Control& control(const std::string& accessibleName) const;

    FixedMetrics metrics_;
    std::vector<std::function<void()>> endOfTurn_;
    int rebuilds_ = 0;
    ui::SceneHost host_;
};

/// The arguments of runApplication(), while it runs.
struct RunningApplication {
    std::string title;
    bool terminatesAfterLastWindowClosed;
    FakeWindow& window;
};

/// Sets what an application does in the fake window. It ends when `body` returns, with status 0.
void whenApplicationRuns(std::function<void(RunningApplication&)> body);

} // namespace platform::fake
