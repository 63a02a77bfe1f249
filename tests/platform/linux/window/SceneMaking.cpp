#include "tests/platform/linux/window/SceneMaking.h"

namespace platform {

using namespace ui;

SceneNode button(Place place, const Rect rect, std::string name, std::function<void()> run) {
    Control control{rect, std::move(place), std::move(name), PushButton{{std::move(run)}}, {}};
    control.content = {{Clip{rect, ShapeKind::capsule, {{Fill{rect, ShapeKind::rectangle, Color::black}}}}}};
    return {std::move(control)};
}

SceneNode menu(Place place, const Point origin, std::string name, std::vector<MenuItem> items) {
    const Rect rect{origin.x, origin.y, 10, 16};
    return {Control{rect,
                    std::move(place),
                    std::move(name),
                    PullDownMenu{std::move(items)},
                    {{MenuIndicator{rect, Color::black}}}}};
}

SceneNode text(const Point origin, std::string text) {
    TextRun run;
    run.rect = {origin.x, origin.y, 200, 16};
    run.text = std::move(text);
    return {std::move(run)};
}

SceneNode announcedText(const Point origin, std::string sentence) {
    SceneNode node = text(origin, std::move(sentence));
    std::get<TextRun>(node.value).announced = true;
    return node;
}

SceneNode namedImage(const Rect rect, std::string image, std::string name) {
    ImageRun run;
    run.rect = rect;
    run.image = {std::move(image)};
    run.accessibleName = std::move(name);
    return {std::move(run)};
}

MenuItem item(std::string title, std::function<void()> run) {
    return {std::move(title), {"trash", ImageReference::Source::system}, {std::move(run)}};
}

Scene scene(std::vector<SceneNode> nodes) {
    Scene result;
    result.size = {450, 230};
    result.nodes = std::move(nodes);
    result.preferredColorScheme = ColorScheme::light;
    return result;
}

Place inCard(const std::uint32_t row, const std::uint32_t index) {
    return {{row, index}, 1};
}

} // namespace platform
