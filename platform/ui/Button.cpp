#include "platform/ui/Button.h"

#include "platform/ui/ButtonStyle.h"
#include "platform/ui/Node.h"
#include "platform/ui/SceneWriter.h"
#include "platform/ui/Text.h"

namespace platform::ui {

namespace {

class ButtonLayout : public WrappingLayoutNode {
public:
    ButtonLayout(std::unique_ptr<LayoutNode> content, std::string title, std::string accessibleName,
                 std::function<void()> action)
        : WrappingLayoutNode{std::move(content)},
          title_{std::move(title)},
          accessibleName_{std::move(accessibleName)},
          action_{std::move(action)} {}

    const LayoutNode& core() const override { return *this; }

    void place(const Point origin, const Proposal& proposal, SceneWriter& writer) override {
        const Size area = size(proposal);
        Control control;
        control.role = Control::Role::button;
        control.rect = {origin.x, origin.y, area.width, area.height};
        control.place = writer.place();
        control.title = title_;
        control.accessibleName = accessibleName_;
        control.action = {action_};
        control.content = writer.collect([&] { content().place(origin, proposal, writer); });
        writer.add({std::move(control)});
    }

private:
    std::string title_;
    std::string accessibleName_;
    std::function<void()> action_;
};

class ButtonNode : public Node {
public:
    ButtonNode(std::string title, std::function<void()> action)
        : title_{std::move(title)}, action_{std::move(action)} {}

    void resolve(const Environment& environment, std::vector<LayoutMember>& members) const override {
        Environment inside = environment;
        inside.accessibleName.clear();
        const Text label = Text::localized(title_);
        const View body = environment.buttonStyle ? environment.buttonStyle->makeBody({label}) : View{label};
        members.push_back({std::make_unique<ButtonLayout>(
            resolveOne(body, inside), title_, environment.accessibleName.empty() ? title_ : environment.accessibleName,
            action_)});
    }
    void describe(Description& description) const override { description.line("Button localized \"" + title_ + "\""); }

private:
    std::string title_;
    std::function<void()> action_;
};

} // namespace

Button::Button(Label label, std::function<void()> action)
    : View{makeView<ButtonNode>(label.titleKey, action)}, label_{std::move(label)}, action_{std::move(action)} {
}

} // namespace platform::ui
