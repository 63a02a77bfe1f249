#include "platform/ui/Menu.h"

#include "platform/ui/Node.h"
#include "platform/ui/SceneWriter.h"

namespace platform::ui {

namespace {

constexpr Size indicatorSize{10, 16};

std::vector<MenuItem> itemsOf(const std::vector<Button>& buttons) {
    std::vector<MenuItem> items;
    items.reserve(buttons.size());
    for (const Button& button : buttons) {
        items.push_back(
            {button.label().titleKey, {button.label().systemImage, ImageReference::Source::system}, {button.action()}});
    }
    return items;
}

class MenuLayout : public LayoutNode {
public:
    MenuLayout(std::vector<MenuItem> items, std::string accessibleName, const Color color)
        : items_{std::move(items)}, accessibleName_{std::move(accessibleName)}, color_{color} {}

    void place(const Point origin, const Proposal&, SceneWriter& writer) override {
        Control control;
        control.role = Control::Role::menu;
        control.rect = {origin.x, origin.y, indicatorSize.width, indicatorSize.height};
        control.place = writer.place();
        control.accessibleName = accessibleName_;
        control.items = items_;
        control.content = {{MenuIndicator{control.rect, color_}}};
        writer.add({std::move(control)});
    }

protected:
    Size measure(const Proposal&) override { return indicatorSize; }

private:
    std::vector<MenuItem> items_;
    std::string accessibleName_;
    Color color_;
};

class MenuNode : public Node {
public:
    MenuNode(std::string title, const std::vector<Button>& buttons)
        : title_{std::move(title)}, items_{itemsOf(buttons)} {}

    void resolve(const Environment& environment, std::vector<LayoutMember>& members) const override {
        const std::string& name = environment.accessibleName.empty() ? title_ : environment.accessibleName;
        members.push_back({std::make_unique<MenuLayout>(items_, name, environment.foreground)});
    }
    void describe(Description& description) const override {
        description.line("Menu localized \"" + title_ + "\"");
        for (const MenuItem& item : items_)
            description.line("  Button Label localized \"" + item.title + "\" system \"" + item.image.name + "\"");
    }

private:
    std::string title_;
    std::vector<MenuItem> items_;
};

} // namespace

Menu::Menu(std::string titleKey, const std::vector<Button>& items)
    : View{makeView<MenuNode>(std::move(titleKey), items)} {
}

} // namespace platform::ui
