#include "platform/ui/Node.h"

// Buttons and menus.

namespace platform::ui {

namespace {

constexpr double indicatorSize = 16;

/// The control of a box. Without an accessibility label, its title is its name.
Control controlOf(const Box& box, const Rect& frame, const SceneWriter& scene, const std::string& title) {
    const std::string& label = box.environment().accessibleName;
    return {frame, scene.place(), label.empty() ? title : label, {}, {}};
}

class ButtonNode : public Node {
public:
    ButtonNode(std::string title, std::function<void()> action)
        : title_{std::move(title)}, action_{std::move(action)} {}

    void resolve(const Surroundings& environment, std::vector<Box>& boxes) const override {
        auto inside = std::make_shared<Environment>(*environment);
        inside->accessibleName.clear();
        const View label = Text::verbatim(title_);
        const View body = environment->buttonStyle ? environment->buttonStyle({label}) : label;
        std::vector<Box> content;
        appendBoxOf(body, inside, content);
        boxes.emplace_back(shared_from_this(), environment, std::move(content));
    }
    Size size(Box& box, const Proposal& proposal) const override { return box.content().size(proposal); }
    void place(Box& box, const Rect& frame, const Proposal& proposal, SceneWriter& scene) const override {
        Control control = controlOf(box, frame, scene, title_);
        control.kind = PushButton{{action_}};
        control.content = scene.collect([&] { box.content().place(frame.origin(), proposal, scene); });
        scene.add({std::move(control)});
    }

private:
    std::string title_;
    std::function<void()> action_;
};

class MenuNode : public Node {
public:
    MenuNode(std::string title, const std::vector<Button>& buttons) : title_{std::move(title)} {
        for (const Button& button : buttons) {
            const ImageReference symbol{button.label().systemImage, ImageReference::Source::system};
            items_.push_back({button.label().titleKey, symbol, {button.action()}});
        }
    }

    Size size(Box&, const Proposal& proposal) const override {
        return {std::min(indicatorSize, proposal.width.value_or(indicatorSize)), indicatorSize};
    }
    void place(Box& box, const Rect& frame, const Proposal&, SceneWriter& scene) const override {
        Control control = controlOf(box, frame, scene, title_);
        control.kind = PullDownMenu{items_};
        control.content = {{MenuIndicator{frame, box.environment().foreground}}};
        scene.add({std::move(control)});
    }

private:
    std::string title_;
    std::vector<MenuItem> items_;
};

} // namespace

Button::Button(Label label, std::function<void()> action)
    : View{makeView<ButtonNode>(label.titleKey, action)}, label_{std::move(label)}, action_{std::move(action)} {
}

Menu::Menu(std::string titleKey, const std::vector<Button>& items)
    : View{makeView<MenuNode>(std::move(titleKey), items)} {
}

} // namespace platform::ui
