#include "platform/ui/Interaction.h"

#include <algorithm>
#include <cmath>

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

/// By what a member of the reading order is known again: a control by its place, others by how many come before them.
struct Identity {
    std::size_t kind;
    std::size_t count;
    Place place;
    friend bool operator==(const Identity&, const Identity&) = default;
};

std::vector<Identity> identitiesIn(const Scene& scene) {
    constexpr std::size_t text = 0;
    constexpr std::size_t image = 1;
    constexpr std::size_t firstControl = 2;
    std::vector<Identity> identities;
    std::size_t texts = 0;
    std::size_t images = 0;
    const Cases identity{[&](const TextRun*) {
                             return Identity{text, texts++, {}};
                         },
                         [&](const ImageRun*) {
                             return Identity{image, images++, {}};
                         },
                         [&](const Control* control) {
                             return Identity{firstControl + control->kind.index(), 0, control->place};
                         }};
    for (const Readable& readable : readingOrder(scene))
        identities.push_back(std::visit(identity, readable));
    return identities;
}

double distance(const Rect& a, const Rect& b) {
    return std::hypot(a.center().x - b.center().x, a.center().y - b.center().y);
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

Rect areaAround(const Control& menu, const Scene& scene) {
    const Edges own = edgesOf(menu.rect);
    Edges area = edgesOf(menu.rect.inset(-reachOfMenus));
    for (const Control* other : controlsOf(scene))
        if (other->place != menu.place) keepClear(area, own, edgesOf(other->rect));
    return {area.left, area.top, area.right - area.left, area.bottom - area.top};
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
