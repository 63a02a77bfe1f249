#pragma once

#include "platform/ui/View.h"

#include <vector>

namespace platform::ui {

/// Its children one over the other, the first at the back.
class ZStack : public View {
public:
    template <typename... Children>
    explicit ZStack(const Alignment alignment, Children... children)
        : ZStack{alignment, std::vector<View>{std::move(children)...}} {}
    ZStack(Alignment alignment, std::vector<View> children);
};

} // namespace platform::ui
