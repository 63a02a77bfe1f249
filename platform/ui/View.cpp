#include "platform/ui/View.h"

#include "platform/ui/Node.h"
#include "platform/ui/VStack.h"

namespace platform::ui {

void Description::children(const std::vector<View>& views) {
    ++depth_;
    for (const View& view : views)
        view.node().describe(*this);
    --depth_;
}

std::string describe(const View& view) {
    Description description;
    view.node().describe(description);
    return description.text();
}

std::unique_ptr<LayoutNode> resolveOne(const View& view, const Environment& environment) {
    std::vector<LayoutMember> members;
    view.node().resolve(environment, members);
    if (members.size() == 1 && members.front().steps.empty()) return std::move(members.front().node);
    members.clear();
    VStack{HorizontalAlignment::center, view}.node().resolve(environment, members);
    return std::move(members.front().node);
}

void ModifierNode::resolve(const Environment& environment, std::vector<LayoutMember>& members) const {
    members.push_back({wrap(resolveOne(content_, inside(environment)), environment)});
}

void ModifierNode::describe(Description& description) const {
    content_.node().describe(description);
    description.modifier(text());
}

} // namespace platform::ui
