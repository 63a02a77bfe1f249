#pragma once

#include "model/SysExtInfo.h"
#include "platform/ui/View.h"

#include <ostream>
#include <string>
#include <vector>

namespace platform::fake {

/// A state of the screen, and its name in tests.
struct ScreenState {
    std::string name;
    /// In the order of the cards.
    std::vector<model::SysExtInfo> records;
    friend std::ostream& operator<<(std::ostream& out, const ScreenState& state) { return out << state.name; }
};

/// One state of each kind that looks different.
std::vector<ScreenState> screenStates();

/// The screen with these records and the fake services.
ui::View screenOf(const ScreenState& state);

} // namespace platform::fake
