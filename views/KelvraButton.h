#pragma once

#include "platform/ui/Elements.h"

namespace views {

/// The style of a card's button: white on a black capsule, pressed or not.
struct KelvraButton {
    platform::ui::View makeBody(const platform::ui::ButtonStyleConfiguration& configuration) const;
};

} // namespace views
