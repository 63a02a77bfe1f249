#include "platform/ui/Divider.h"

#include "platform/ui/Node.h"
#include "platform/ui/SceneWriter.h"

namespace platform::ui {

namespace {

constexpr double thickness = 1;
constexpr Color lineColor{0, 0, 0, 0.1};

class DividerLayout : public LayoutNode {
public:
    explicit DividerLayout(const Axis stackAxis) : stackAxis_{stackAxis} {}

    void place(const Point origin, const Proposal& proposal, SceneWriter& writer) override {
        const Size line = size(proposal);
        writer.add({Fill{{origin.x, origin.y, line.width, line.height}, ShapeKind::rectangle, lineColor}});
    }

protected:
    Size measure(const Proposal& proposal) override {
        return stackAxis_ == Axis::vertical ? Size{proposal.width.value_or(0), thickness}
                                            : Size{thickness, proposal.height.value_or(0)};
    }

private:
    Axis stackAxis_;
};

class DividerNode : public Node {
public:
    void resolve(const Environment& environment, std::vector<LayoutMember>& members) const override {
        members.push_back({std::make_unique<DividerLayout>(environment.stackAxis)});
    }
    void describe(Description& description) const override { description.line("Divider"); }
};

} // namespace

Divider::Divider() : View{makeView<DividerNode>()} {
}

} // namespace platform::ui
