#include "platform/ui/ZStack.h"

#include "platform/ui/SceneWriter.h"
#include "platform/ui/StackNode.h"

#include <algorithm>

namespace platform::ui {

namespace {

class DepthStackLayout : public LayoutNode {
public:
    DepthStackLayout(const Alignment alignment, std::vector<LayoutMember> members)
        : alignment_{alignment}, members_{std::move(members)} {}

    void place(const Point origin, const Proposal& proposal, SceneWriter& writer) override {
        const Size outer = size(proposal);
        for (const LayoutMember& member : members_) {
            const Point inside = offset(alignment_, outer, member.node->size(proposal));
            writer.at(member.steps, member.rowLength, [&] {
                member.node->place({origin.x + inside.x, origin.y + inside.y}, proposal, writer);
            });
        }
    }

protected:
    Size measure(const Proposal& proposal) override {
        Size largest;
        for (const LayoutMember& member : members_) {
            const Size size = member.node->size(proposal);
            largest = {std::max(largest.width, size.width), std::max(largest.height, size.height)};
        }
        return largest;
    }

private:
    Alignment alignment_;
    std::vector<LayoutMember> members_;
};

class DepthStackNode : public StackNode {
public:
    DepthStackNode(const Alignment alignment, std::vector<View> children)
        : StackNode{"ZStack center", std::move(children)}, alignment_{alignment} {}

    void resolve(const Environment& environment, std::vector<LayoutMember>& members) const override {
        members.push_back({std::make_unique<DepthStackLayout>(alignment_, this->members(environment))});
    }

private:
    Alignment alignment_;
};

} // namespace

ZStack::ZStack(const Alignment alignment, std::vector<View> children)
    : View{makeView<DepthStackNode>(alignment, std::move(children))} {
}

} // namespace platform::ui
