#pragma once

#include "platform/ui/View.h"

#include <functional>
#include <string>

namespace platform::ui {

/// A title, and the symbol of the system that stands before it where there is room for one: in menus.
struct Label {
    std::string titleKey;
    std::string systemImage = {};
};

/// A control that runs its action once for each press. Its title names it for assistive technology unless an
/// accessibility label does; its look is the button style's.
class Button : public View {
public:
    Button(const char* titleKey, std::function<void()> action) : Button{Label{titleKey}, std::move(action)} {}
    Button(Label label, std::function<void()> action);

    const Label& label() const { return label_; }
    const std::function<void()>& action() const { return action_; }

private:
    Label label_;
    std::function<void()> action_;
};

} // namespace platform::ui
