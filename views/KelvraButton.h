#pragma once

#include "platform/ui/ButtonStyle.h"

namespace views {

/// The look of every action of a card: white on a black capsule, the same pressed as at rest.
class KelvraButton : public platform::ui::ButtonStyle {
public:
    platform::ui::View makeBody(const platform::ui::ButtonStyleConfiguration& configuration) const override;
    const char* name() const override { return "KelvraButton"; }
};

} // namespace views
