#include "platform/ui/HitArea.h"

#include <algorithm>

namespace platform::ui {

namespace {

/// How far beyond a menu's indicator a press still counts.
constexpr double reachOfMenus = 8;

struct Edges {
    double left;
    double top;
    double right;
    double bottom;
};

Edges edgesOf(const Rect& rect) {
    return {rect.x, rect.y, rect.maxX(), rect.maxY()};
}

bool overlap(const Edges& a, const Edges& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

/// `area` without what lies on the other side of `other`; `own` is on one side of it.
void keepClear(Edges& area, const Edges& own, const Edges& other) {
    if (!overlap(area, other)) return;
    if (other.right <= own.left)
        area.left = other.right;
    else if (other.left >= own.right)
        area.right = other.left;
    else if (other.bottom <= own.top)
        area.top = other.bottom;
    else if (other.top >= own.bottom)
        area.bottom = other.top;
}

} // namespace

Rect hitArea(const Scene& scene, const Control& control) {
    if (control.role == Control::Role::button) return control.rect;
    const Edges own = edgesOf(control.rect);
    Edges area{own.left - reachOfMenus, own.top - reachOfMenus, own.right + reachOfMenus, own.bottom + reachOfMenus};
    for (const Control* other : controlsOf(scene))
        if (other->place != control.place) keepClear(area, own, edgesOf(other->rect));
    return {area.left, area.top, area.right - area.left, area.bottom - area.top};
}

} // namespace platform::ui
