#pragma once

#include "platform/ui/View.h"

namespace platform::ui {

/// Nothing: a stack that holds it has one member less.
class EmptyView : public View {
public:
    EmptyView();
};

} // namespace platform::ui
