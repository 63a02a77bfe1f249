#pragma once

#include "platform/ui/View.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace platform::ui {

/// Several views that count as members of the stack around them.
class Group : public View {
public:
    template <typename... Children>
    explicit Group(Children... children) : Group{std::vector<View>{std::move(children)...}} {}
    explicit Group(std::vector<View> children);
};

/// One row per index from 0 to `count` - 1, identified by the index. What a row holds counts as members of the stack
/// around them; an empty row as none.
class ForEach : public View {
public:
    ForEach(std::size_t count, const std::function<View(std::size_t index)>& row);
};

} // namespace platform::ui
