#pragma once

#include "platform/ui/View.h"

namespace platform::ui {

/// A line 1 point thick across its stack, over the length offered.
class Divider : public View {
public:
    Divider();
};

} // namespace platform::ui
