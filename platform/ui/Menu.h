#pragma once

#include "platform/ui/Button.h"
#include "platform/ui/View.h"

#include <string>
#include <vector>

namespace platform::ui {

/// A small indicator that opens a menu of buttons, each with its title and symbol. Its title, where it has one, names
/// it for assistive technology unless an accessibility label does; it is not drawn.
class Menu : public View {
public:
    Menu(std::string titleKey, const std::vector<Button>& items);
};

} // namespace platform::ui
