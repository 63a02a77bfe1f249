#include "tests/support/SceneText.h"

#include "platform/ui/SceneHost.h"
#include "tests/support/FixedMetrics.h"

#include <array>
#include <cstdio>

namespace platform::fake {

namespace {

std::string numberText(const double number) {
    if (number == ui::greatestFiniteMagnitude) return "greatest";
    std::array<char, 400> text{};
    std::snprintf(text.data(), text.size(), "%.3f", number);
    std::string result{text.data()};
    result.erase(result.find_last_not_of('0') + 1);
    if (result.back() == '.') result.pop_back();
    return result == "-0" ? "0" : result;
}

std::string fontText(const ui::Font font) {
    constexpr std::array styles{"body", "callout", "title3"};
    const std::string style = styles.at(static_cast<std::size_t>(font.style));
    return font.weight == ui::FontWeight::semibold ? style + " semibold" : style;
}

std::string shapeText(const ui::ShapeKind shape) {
    constexpr std::array shapes{"rectangle", "capsule", "circle"};
    return shapes.at(static_cast<std::size_t>(shape));
}

std::string quoted(const std::string& text) {
    return " \"" + text + "\"";
}

bool isSystem(const ui::ImageReference& image) {
    return image.source == ui::ImageReference::Source::system;
}

/// Writes a scene line by line.
class SceneText {
public:
    void write(const std::vector<ui::SceneNode>& nodes) {
        for (const ui::SceneNode& node : nodes)
            std::visit([this](const auto& value) { line(value); }, node.value);
    }
    const std::string& text() const { return text_; }

private:
    void add(const std::string& line) { text_ += std::string(2 * depth_, ' ') + line + "\n"; }
    void inside(const std::vector<ui::SceneNode>& nodes) {
        ++depth_;
        write(nodes);
        --depth_;
    }

    void line(const ui::Fill& fill) {
        add("fill " + shapeText(fill.shape) + " " + textOf(fill.rect) + " " + textOf(fill.color));
    }
    void line(const ui::Stroke& stroke) {
        add("stroke " + shapeText(stroke.shape) + " " + textOf(stroke.rect) + " " + textOf(stroke.color) + " " +
            numberText(stroke.lineWidth));
    }
    void line(const ui::TextRun& run) {
        add("text " + textOf(run.rect) + " " + fontText(run.font) + " " + textOf(run.color) + quoted(run.text) +
            (run.truncated ? " truncated" : "") + (run.announced ? " announced" : ""));
    }
    void line(const ui::ImageRun& run) {
        add("image " + textOf(run.rect) + (isSystem(run.image) ? " system " + textOf(run.color) : "") +
            quoted(run.image.name) + (run.accessibleName.empty() ? "" : " named" + quoted(run.accessibleName)));
    }
    void line(const ui::MenuIndicator& indicator) {
        add("indicator " + textOf(indicator.rect) + " " + textOf(indicator.color));
    }
    void line(const ui::Clip& clip) {
        add("clip " + shapeText(clip.shape) + " " + textOf(clip.rect));
        inside(clip.content);
    }
    void line(const ui::Control& control) {
        const std::string place = textOf(control.rect) + quoted(control.accessibleName);
        const auto button = [&](const ui::PushButton&) { add("button " + place); };
        const auto menu = [&](const ui::PullDownMenu& offered) {
            add("menu " + place);
            for (const ui::MenuItem& item : offered.items)
                add("  item" + quoted(item.title) + (isSystem(item.image) ? " system" : "") + quoted(item.image.name));
        };
        std::visit(ui::Cases{button, menu}, control.kind);
        inside(control.content);
    }

    std::string text_;
    std::size_t depth_ = 0;
};

} // namespace

std::string textOf(const ui::Scene& scene) {
    SceneText text;
    text.write(scene.nodes);
    return text.text();
}

std::string textOf(const ui::Color& color) {
    if (color == ui::Color{0, 0, 0, 1}) return "black";
    if (color == ui::Color{1, 1, 1, 1}) return "white";
    if (color == ui::Color{142 / 255.0, 142 / 255.0, 147 / 255.0, 1}) return "gray";
    const std::string components =
        numberText(color.red * 255) + "/" + numberText(color.green * 255) + "/" + numberText(color.blue * 255);
    return color.opacity == 1 ? components : components + "@" + numberText(color.opacity);
}

std::string textOf(const ui::Rect& rect) {
    return numberText(rect.x) + "," + numberText(rect.y) + " " + textOf(rect.size());
}

std::string textOf(const ui::Size& size) {
    return numberText(size.width) + "x" + numberText(size.height);
}

std::string sceneOf(const ui::View& view, const std::optional<ui::Size> size, const ui::EdgeInsets safeArea) {
    const FixedMetrics metrics;
    return textOf(ui::layout(view, size, metrics, safeArea));
}

} // namespace platform::fake
