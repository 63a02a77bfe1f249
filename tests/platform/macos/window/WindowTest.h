#pragma once

#include "platform/ObservableObject.h"
#include "platform/Published.h"
#include "platform/ui/View.h"
#include "tests/macos/gnustep/Desk.h"
#include "tests/macos/gnustep/ScriptedExtensions.h"

#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace macos_tests {

inline const std::string camera = "com.kelvra.ip-camera.cmio";
inline const std::string network = "com.kelvra.driverkit.usb-to-poe";

/// What the extension service tells of one extension: one copy, of the application's own build.
struct Copy {
    std::string identifier;
    bool isEnabled = false;
    bool isAwaitingUserApproval = false;
};

inline Copy enabled(const std::string& identifier) {
    return {.identifier = identifier, .isEnabled = true};
}

/// Installed, and not yet allowed by the user.
inline Copy waiting(const std::string& identifier) {
    return {.identifier = identifier, .isAwaitingUserApproval = true};
}

/// The application, a person at it, and an extension service that answers as the test says.
class WindowTest : public testing::Test {
protected:
    using Body = std::function<void(Desk&)>;

    /// Runs `body` in front of the application's window.
    static void run(const Body& body);
    /// Runs `body` in front of the application's window; then the application has to end by itself, and the program
    /// with it.
    static void runToItsEnd(const Body& body);

    /// How often this was submitted: "<kind> <identifier>".
    long submitted(const std::string& submission) const;
    /// Waits until it was submitted that often, and tells whether it was.
    testing::AssertionResult isSubmitted(Desk& desk, const std::string& submission, long times = 1) const;
    /// Waits until the window shows the text, and tells whether it does.
    static testing::AssertionResult comesToShow(Desk& desk, const std::string& text);
    /// Waits until a control or an image has that name.
    static testing::AssertionResult comesToHave(Desk& desk, const std::string& label);
    /// Waits until what the steps do meanwhile is done.
    static testing::AssertionResult isDone(Desk& desk);

    /// Answers the latest question about that extension.
    void found(const Copy& copy) const;

    /// Knows of nothing when the body begins but of what the application asks at its start.
    standin::ScriptedExtensions& service_ = standin::ScriptedExtensions::shared();
};

/// What a screen of a test shows: one number.
class Situation : public platform::ObservableObject {
public:
    platform::Published<int> number{*this, 0};
};

/// A screen of a test's own in the real window, for what the application's screen never comes to.
class ScreenTest : public testing::Test {
protected:
    using Screen = std::function<platform::ui::View(int number)>;

    /// Runs `body` in front of a window that shows the screen of the number.
    void run(const Screen& screen, const std::function<void(Desk&)>& body);
    /// Makes the number another: the window shows the screen of it at the end of the turn.
    void change(int number) { situation_->number = number; }

    /// A button that counts its presses.
    platform::ui::View button(const std::string& title);
    /// How often the button of that title was pressed, in any of the screens.
    int pressed(const std::string& title) const;

private:
    std::shared_ptr<Situation> situation_ = std::make_shared<Situation>();
    std::map<std::string, int> presses_;
};

/// Waits until focus is on the control of that label, on none if that is empty, and tells whether it is.
testing::AssertionResult comesToFocus(Desk& desk, const std::string& label);

/// Rows of their own, one below the other.
platform::ui::View rows(const std::vector<platform::ui::View>& rows);

} // namespace macos_tests
