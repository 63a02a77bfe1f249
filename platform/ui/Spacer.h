#pragma once

#include "platform/ui/View.h"

namespace platform::ui {

/// Takes what is left along the axis of its stack, at the least the default spacing; nothing across.
class Spacer : public View {
public:
    Spacer();
};

} // namespace platform::ui
