#include "platform/ui/Scene.h"

#include "platform/ui/NumberText.h"

#include <algorithm>

namespace platform::ui {

bool operator==(const Clip& a, const Clip& b) {
    return a.rect == b.rect && a.shape == b.shape && a.content == b.content;
}

bool operator==(const Control& a, const Control& b) {
    return a.role == b.role && a.rect == b.rect && a.place == b.place && a.title == b.title &&
           a.accessibleName == b.accessibleName && a.items == b.items && a.content == b.content;
}

bool Place::inSameRowAs(const Place& other) const {
    return rowLength == other.rowLength && rowLength <= std::min(steps.size(), other.steps.size()) &&
           std::equal(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(rowLength), other.steps.begin());
}

namespace {

void collectControls(const std::vector<SceneNode>& nodes, std::vector<const Control*>& controls) {
    for (const SceneNode& node : nodes) {
        if (const auto* control = std::get_if<Control>(&node.value)) controls.push_back(control);
        if (const auto* clip = std::get_if<Clip>(&node.value)) collectControls(clip->content, controls);
    }
}

std::string quoted(const std::string& text) {
    return " \"" + text + "\"";
}

/// Writes a scene line by line.
class SceneText {
public:
    void write(const std::vector<SceneNode>& nodes) {
        for (const SceneNode& node : nodes)
            std::visit([this](const auto& value) { line(value); }, node.value);
    }
    const std::string& text() const { return text_; }

private:
    void add(const std::string& line) { text_ += std::string(2 * depth_, ' ') + line + "\n"; }
    void inside(const std::vector<SceneNode>& nodes) {
        ++depth_;
        write(nodes);
        --depth_;
    }

    void line(const Fill& fill) {
        add(std::string{"fill "} + nameOf(fill.shape) + " " + textOf(fill.rect) + " " + textOf(fill.color));
    }
    void line(const Stroke& stroke) {
        add(std::string{"stroke "} + nameOf(stroke.shape) + " " + textOf(stroke.rect) + " " + textOf(stroke.color) +
            " " + textOf(stroke.lineWidth));
    }
    void line(const TextRun& run) {
        add("text " + textOf(run.rect) + " " + textOf(run.font) + " " + textOf(run.color) + quoted(run.text) +
            (run.truncated ? " truncated" : "") + (run.announced ? " announced" : ""));
    }
    void line(const ImageRun& run) {
        const bool system = run.image.source == ImageReference::Source::system;
        add("image " + textOf(run.rect) + (system ? " system " + textOf(run.color) : "") + quoted(run.image.name) +
            (run.accessibleName.empty() ? "" : " named" + quoted(run.accessibleName)));
    }
    void line(const MenuIndicator& indicator) {
        add("indicator " + textOf(indicator.rect) + " " + textOf(indicator.color));
    }
    void line(const Clip& clip) {
        add(std::string{"clip "} + nameOf(clip.shape) + " " + textOf(clip.rect));
        inside(clip.content);
    }
    void line(const Control& control) {
        add((control.role == Control::Role::button ? "button " : "menu ") + textOf(control.rect) +
            quoted(control.accessibleName));
        ++depth_;
        for (const MenuItem& item : control.items)
            add("item" + quoted(item.title) + quoted(item.image.name));
        write(control.content);
        --depth_;
    }

    std::string text_;
    std::size_t depth_ = 0;
};

} // namespace

std::vector<const Control*> controlsOf(const Scene& scene) {
    std::vector<const Control*> controls;
    collectControls(scene.nodes, controls);
    return controls;
}

std::string describe(const Scene& scene) {
    SceneText text;
    text.write(scene.nodes);
    return text.text();
}

} // namespace platform::ui
