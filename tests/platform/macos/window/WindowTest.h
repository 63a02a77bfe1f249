#pragma once

#include "tests/macos/gnustep/Desk.h"
#include "tests/macos/gnustep/ScriptedExtensions.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>

namespace macos_tests {

inline const std::string camera = "com.kelvra.ip-camera.cmio";
inline const std::string network = "com.kelvra.driverkit.usb-to-poe";

/// What the extension service tells of one extension.
struct Copy {
    std::string identifier;
    std::string version = "2105";
    bool isEnabled = false;
    bool isAwaitingUserApproval = false;
    bool isUninstalling = false;
};

inline Copy enabled(const std::string& identifier, const std::string& version = "2105") {
    return {.identifier = identifier, .version = version, .isEnabled = true};
}

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

    /// Answers the latest question about that extension.
    void found(const Copy& copy) const;

    standin::ScriptedExtensions& service_ = standin::ScriptedExtensions::shared();
};

} // namespace macos_tests
