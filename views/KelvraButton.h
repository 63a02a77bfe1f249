#pragma once

#include "platform/ui/Elements.h"

namespace views {

/// The look of every action of a card: white on a black capsule, the same pressed as at rest.
struct KelvraButton {
    platform::ui::View makeBody(const platform::ui::ButtonStyleConfiguration& configuration) const;
};

} // namespace views
