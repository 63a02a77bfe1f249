#include "platform/ui/Focus.h"

#include <algorithm>
#include <cmath>

namespace platform::ui {

namespace {

double distance(const Rect& a, const Rect& b) {
    return std::hypot(a.x + a.width / 2 - b.x - b.width / 2, a.y + a.height / 2 - b.y - b.height / 2);
}

/// The steps of a place are its reading order.
const Control* nextInRow(const std::vector<const Control*>& controls, const Place& focused) {
    const Control* before = nullptr;
    for (const Control* control : controls) {
        if (!control->place.inSameRowAs(focused)) continue;
        if (control->place.steps > focused.steps) return control;
        before = control;
    }
    return before;
}

} // namespace

std::optional<Place> focusAfter(const Scene& before, const Scene& after, const Place& focused) {
    const auto old = controlsOf(before);
    const auto now = controlsOf(after);
    if (now.empty()) return std::nullopt;
    const auto hasPlace = [&](const Control* control) { return control->place == focused; };
    if (std::any_of(now.begin(), now.end(), hasPlace)) return focused;
    if (const Control* next = nextInRow(now, focused)) return next->place;
    const auto gone = std::find_if(old.begin(), old.end(), hasPlace);
    if (gone == old.end()) return now.front()->place;
    const auto nearest = std::min_element(now.begin(), now.end(), [&](const Control* a, const Control* b) {
        return distance(a->rect, (*gone)->rect) < distance(b->rect, (*gone)->rect);
    });
    return (*nearest)->place;
}

} // namespace platform::ui
