#pragma once

#include "platform/ui/View.h"

#include <vector>

namespace platform::ui {

/// Its children from top to bottom, with the default spacing between neighbours.
class VStack : public View {
public:
    template <typename... Children>
    explicit VStack(const HorizontalAlignment alignment, Children... children)
        : VStack{alignment, std::vector<View>{std::move(children)...}} {}
    VStack(HorizontalAlignment alignment, std::vector<View> children);
};

} // namespace platform::ui
