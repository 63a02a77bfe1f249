#pragma once

#include "platform/ObservableObject.h"
#include "platform/Published.h"
#include "platform/ui/View.h"
#include "tests/macos/gnustep/Desk.h"

#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace macos_tests {

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
    /// Makes the number another.
    void change(int number) { situation_->number = number; }

    /// A button that counts its presses.
    platform::ui::View button(const std::string& title);
    int pressed(const std::string& title) const;

private:
    std::shared_ptr<Situation> situation_ = std::make_shared<Situation>();
    std::map<std::string, int> presses_;
};

/// Rows of their own, one below the other.
platform::ui::View rows(const std::vector<platform::ui::View>& rows);

} // namespace macos_tests
