#include "platform/ui/Interaction.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace platform::ui {

namespace {

/// How far beyond a menu's indicator a press still counts.
constexpr double reachOfMenus = 8;

void collect(const std::vector<SceneNode>& nodes, std::vector<Readable>& found) {
    const Cases collector{[&](const TextRun& text) { found.emplace_back(&text); },
                          [&](const ImageRun& image) {
                              if (!image.accessibleName.empty()) found.emplace_back(&image);
                          },
                          [&](const Control& control) { found.emplace_back(&control); },
                          [&](const Clip& clip) { collect(clip.content, found); }, [](const auto&) {}};
    for (const SceneNode& node : nodes)
        std::visit(collector, node.value);
}

/// Identifies a member of the reading order: its kind, and its place or its number among its kind.
using Identity = std::pair<std::size_t, Place>;

std::vector<Identity> identitiesIn(const Scene& scene) {
    std::vector<Identity> identities;
    std::uint32_t texts = 0;
    std::uint32_t images = 0;
    const Cases identity{[&](const TextRun*) {
                             return Identity{0, {{texts++}}};
                         },
                         [&](const ImageRun*) {
                             return Identity{1, {{images++}}};
                         },
                         [&](const Control* control) {
                             return Identity{2 + control->kind.index(), control->place};
                         }};
    for (const Readable& readable : readingOrder(scene))
        identities.push_back(std::visit(identity, readable));
    return identities;
}

bool areInOneRow(const Place& a, const Place& b) {
    const auto rowOf = [](const Place& place) {
        return std::vector(place.steps.begin(), place.steps.begin() + static_cast<std::ptrdiff_t>(place.rowLength));
    };
    return rowOf(a) == rowOf(b);
}

double distance(const Rect& a, const Rect& b) {
    return std::hypot(a.center().x - b.center().x, a.center().y - b.center().y);
}

/// The steps of a place are its reading order.
const Control* nextInRow(const std::vector<const Control*>& controls, const Place& focused) {
    const Control* before = nullptr;
    for (const Control* control : controls) {
        if (!areInOneRow(control->place, focused)) continue;
        if (control->place.steps > focused.steps) return control;
        before = control;
    }
    return before;
}

bool overlap(const Rect& a, const Rect& b) {
    return a.x < b.maxX() && b.x < a.maxX() && a.y < b.maxY() && b.y < a.maxY();
}

/// `area`, cut off at the edge of `other` that faces `own`.
Rect keptClear(const Rect& area, const Rect& own, const Rect& other) {
    if (!overlap(area, other)) return area;
    if (other.maxX() <= own.x) return {other.maxX(), area.y, area.maxX() - other.maxX(), area.height};
    if (other.x >= own.maxX()) return {area.x, area.y, other.x - area.x, area.height};
    if (other.maxY() <= own.y) return {area.x, other.maxY(), area.width, area.maxY() - other.maxY()};
    if (other.y >= own.maxY()) return {area.x, area.y, area.width, other.y - area.y};
    return area;
}

Rect areaAround(const Control& menu, const Scene& scene) {
    Rect area = menu.rect.inset(-reachOfMenus);
    for (const Control* other : controlsOf(scene))
        if (other->place != menu.place) area = keptClear(area, menu.rect, other->rect);
    return area;
}

} // namespace

std::vector<Readable> readingOrder(const Scene& scene) {
    std::vector<Readable> found;
    collect(scene.nodes, found);
    return found;
}

std::vector<const Control*> controlsOf(const Scene& scene) {
    std::vector<const Control*> controls;
    for (const Readable& readable : readingOrder(scene))
        if (const auto* control = std::get_if<const Control*>(&readable)) controls.push_back(*control);
    return controls;
}

std::vector<std::optional<std::size_t>> predecessors(const Scene& before, const Scene& after) {
    const auto old = identitiesIn(before);
    std::vector<std::optional<std::size_t>> found;
    for (const Identity& identity : identitiesIn(after)) {
        const auto same = std::find(old.begin(), old.end(), identity);
        found.push_back(same == old.end() ? std::nullopt : std::optional<std::size_t>{same - old.begin()});
    }
    return found;
}

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

Rect hitArea(const Scene& scene, const Control& control) {
    return std::visit(Cases{[&](const PushButton&) { return control.rect; },
                            [&](const PullDownMenu&) { return areaAround(control, scene); }},
                      control.kind);
}

} // namespace platform::ui
