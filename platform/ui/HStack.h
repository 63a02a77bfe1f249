#pragma once

#include "platform/ui/View.h"

#include <vector>

namespace platform::ui {

/// Its children from leading to trailing, with the default spacing between neighbours.
class HStack : public View {
public:
    template <typename... Children>
    explicit HStack(const VerticalAlignment alignment, Children... children)
        : HStack{alignment, std::vector<View>{std::move(children)...}} {}
    HStack(VerticalAlignment alignment, std::vector<View> children);
};

} // namespace platform::ui
