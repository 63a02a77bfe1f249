#include "platform/ui/ButtonStyle.h"
#include "platform/ui/Node.h"
#include "platform/ui/NumberText.h"

#include <functional>

// Modifiers that change nothing but what flows down, and those that only name a look.

namespace platform::ui {

namespace {

class InheritedNode : public ModifierNode {
public:
    using Change = std::function<void(Environment&)>;

    InheritedNode(View content, std::string text, Change change)
        : ModifierNode{std::move(content)}, text_{std::move(text)}, change_{std::move(change)} {}

protected:
    Environment inside(const Environment& environment) const override {
        Environment changed = environment;
        change_(changed);
        return changed;
    }
    std::string text() const override { return text_; }

private:
    std::string text_;
    Change change_;
};

class LookNode : public ModifierNode {
public:
    LookNode(View content, std::string text) : ModifierNode{std::move(content)}, text_{std::move(text)} {}

protected:
    std::string text() const override { return text_; }

private:
    std::string text_;
};

} // namespace

View View::foregroundColor(const Color color) const {
    return makeView<InheritedNode>(*this, "foregroundColor " + textOf(color),
                                   [color](Environment& inside) { inside.foreground = color; });
}

View View::font(const Font font) const {
    return makeView<InheritedNode>(*this, "font " + textOf(font), [font](Environment& inside) { inside.font = font; });
}

View View::fontWeight(const FontWeight weight) const {
    return makeView<InheritedNode>(*this, std::string{"fontWeight "} + nameOf(weight),
                                   [weight](Environment& inside) { inside.fontWeight = weight; });
}

View View::buttonStyle(std::shared_ptr<const ButtonStyle> style) const {
    const std::string name = style->name();
    return makeView<InheritedNode>(*this, "buttonStyle " + name,
                                   [style = std::move(style)](Environment& inside) { inside.buttonStyle = style; });
}

View View::accessibilityLabel(std::string label) const {
    const std::string text = "accessibilityLabel \"" + label + "\"";
    return makeView<InheritedNode>(*this, text,
                                   [label = std::move(label)](Environment& inside) { inside.accessibleName = label; });
}

View View::accessibilityAnnounced() const {
    return makeView<InheritedNode>(*this, "accessibilityAnnounced",
                                   [](Environment& inside) { inside.announced = true; });
}

View View::menuStyle(BorderlessButtonMenuStyle) const {
    return makeView<LookNode>(*this, "menuStyle BorderlessButtonMenuStyle");
}

View View::groupBoxStyle(DefaultGroupBoxStyle) const {
    return makeView<LookNode>(*this, "groupBoxStyle DefaultGroupBoxStyle");
}

View View::preferredColorScheme(ColorScheme) const {
    return makeView<LookNode>(*this, "preferredColorScheme light");
}

} // namespace platform::ui
