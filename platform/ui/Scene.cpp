#include "platform/ui/Scene.h"

#include <algorithm>

namespace platform::ui {

bool operator==(const Clip& a, const Clip& b) {
    return a.rect == b.rect && a.shape == b.shape && a.content == b.content;
}

bool operator==(const Control& a, const Control& b) {
    return a.rect == b.rect && a.place == b.place && a.accessibleName == b.accessibleName && a.kind == b.kind &&
           a.content == b.content;
}

bool Place::inSameRowAs(const Place& other) const {
    return rowLength == other.rowLength && rowLength <= std::min(steps.size(), other.steps.size()) &&
           std::equal(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(rowLength), other.steps.begin());
}

} // namespace platform::ui
