#include "platform/ui/Elements.h"
#include "platform/ui/Interaction.h"
#include "platform/ui/SceneHost.h"
#include "tests/fuzz/Bytes.h"
#include "tests/support/FixedMetrics.h"
#include "tests/support/SceneText.h"

#include <array>
#include <cmath>
#include <set>

// Any tree of views: it has a scene, always the same one, and nothing in it has an impossible size.

namespace tests {

namespace {

using namespace platform::ui;

double lengthIn(Bytes& bytes) {
    constexpr std::array lengths{0.0, 1.0, 7.5, 16.0, 100.0, 1e4, -5.0, -1e300, 1e300, greatestFiniteMagnitude};
    return lengths[bytes.choice(lengths.size())];
}

std::optional<double> frameLengthIn(Bytes& bytes) {
    const std::size_t kind = bytes.choice(3);
    if (kind == 0) return std::nullopt;
    return kind == 1 ? infinity : lengthIn(bytes);
}

Alignment alignmentIn(Bytes& bytes) {
    return std::array{Alignment::leading, Alignment::center, Alignment::trailing}[bytes.choice(3)];
}

View viewIn(Bytes& bytes, int depth);

View stackIn(Bytes& bytes, const int depth) {
    const Alignment alignment = alignmentIn(bytes);
    const std::size_t kind = bytes.choice(5);
    std::vector<View> views;
    for (std::size_t count = bytes.choice(5); count > 0; --count)
        views.push_back(viewIn(bytes, depth - 1));
    if (kind == 0) return HStack{VerticalAlignment::center, views};
    if (kind == 1) return VStack{alignment, views};
    if (kind == 2) return ZStack{alignment, views};
    if (kind == 3) return Group{views};
    return ForEach{views.size(), [&](const std::size_t index) { return views[index]; }};
}

View elementIn(Bytes& bytes, const int depth) {
    const std::size_t kind = bytes.choice(11);
    if (kind == 0) return Text::verbatim(bytes.text());
    if (kind == 1) return Image::named(bytes.text());
    if (kind == 2) return Image::system(bytes.text()).resizable();
    if (kind == 3) return Circle{}.stroke(Color::gray, lengthIn(bytes));
    if (kind == 4) return Spacer{};
    if (kind == 5) return Divider{};
    if (kind == 6) return Button{Label{"Press " + bytes.text()}, [] {}};
    if (kind == 7) return Menu{"Open " + bytes.text(), {Button{"Press", [] {}}}};
    return depth > 0 ? stackIn(bytes, depth) : EmptyView{};
}

View modifiedBy(Bytes& bytes, const View& view, const int depth) {
    const std::size_t kind = bytes.choice(12);
    if (kind == 0) return view.frame(FixedFrame{frameLengthIn(bytes), frameLengthIn(bytes), alignmentIn(bytes)});
    if (kind == 1) return view.frame(FlexibleFrame{frameLengthIn(bytes), frameLengthIn(bytes), alignmentIn(bytes)});
    if (kind == 2) return view.padding(bytes.choice(2) == 0 ? Edge::all : Edge::trailing, lengthIn(bytes));
    if (kind == 3) return view.background(Color::gray);
    if (kind == 4) return view.background(viewIn(bytes, depth - 1));
    if (kind == 5) return view.border(Color::gray, lengthIn(bytes));
    if (kind == 6) return view.clipShape(Capsule{});
    if (kind == 7) return view.clipShape(Circle{});
    if (kind == 8) return view.font(Font::title3).foregroundColor(Color::white);
    if (kind == 9) return view.buttonStyle([](const auto& button) { return button.label.padding(); });
    if (kind == 10) return view.accessibilityLabel(bytes.text()).accessibilityAnnounced();
    return observing([](const auto&) { return nullptr; }, [view] { return view; });
}

View viewIn(Bytes& bytes, const int depth) {
    View view = elementIn(bytes, depth);
    for (std::size_t count = depth > 0 ? bytes.choice(4) : 0; count > 0; --count)
        view = modifiedBy(bytes, view, depth);
    return view;
}

Scene sceneOf(Bytes bytes) {
    platform::fake::FixedMetrics metrics;
    metrics.images["a"] = {30, 20};
    const std::optional<Size> area = bytes.choice(2) == 0 ? std::nullopt : std::optional{Size{300, 200}};
    return layout(viewIn(bytes, 6), area, metrics, {28, 0, 0, 0});
}

void mustBePossible(const Rect& rect) {
    for (const double number : {rect.x, rect.y, rect.width, rect.height})
        must(std::isfinite(number), "not finite: " + platform::fake::textOf(rect));
    must(rect.width >= 0 && rect.height >= 0, "negative: " + platform::fake::textOf(rect));
}

void mustBePossible(const std::vector<SceneNode>& nodes) {
    const auto check = [](const auto& value) {
        mustBePossible(value.rect);
        if constexpr (requires { value.content; }) mustBePossible(value.content);
    };
    for (const SceneNode& node : nodes)
        std::visit(check, node.value);
}

} // namespace

void fuzz(const Bytes bytes) {
    const Scene scene = sceneOf(bytes);
    must(scene == sceneOf(bytes), "two layouts of one description differ");
    mustBePossible({0, 0, scene.size.width, scene.size.height});
    mustBePossible(scene.nodes);
    std::set<std::vector<std::uint32_t>> places;
    for (const Control* const control : controlsOf(scene)) {
        must(places.insert(control->place.steps).second, "two controls stand at one place");
        must(!control->accessibleName.empty(), "a control has no name");
        mustBePossible(hitArea(scene, *control));
    }
}

} // namespace tests
