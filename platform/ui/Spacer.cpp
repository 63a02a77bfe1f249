#include "platform/ui/Spacer.h"

#include "platform/ui/Node.h"

#include <algorithm>

namespace platform::ui {

namespace {

constexpr double leastLength = 8;

class SpacerLayout : public LayoutNode {
public:
    explicit SpacerLayout(const Axis axis) : axis_{axis} {}

    void place(Point, const Proposal&, SceneWriter&) override {}
    std::optional<double> spacerMinimum() const override { return leastLength; }

protected:
    Size measure(const Proposal& proposal) override {
        const bool horizontal = axis_ == Axis::horizontal;
        const double length = std::max(leastLength, (horizontal ? proposal.width : proposal.height).value_or(0));
        return horizontal ? Size{length, 0} : Size{0, length};
    }

private:
    Axis axis_;
};

class SpacerNode : public Node {
public:
    void resolve(const Environment& environment, std::vector<LayoutMember>& members) const override {
        members.push_back({std::make_unique<SpacerLayout>(environment.stackAxis)});
    }
    void describe(Description& description) const override { description.line("Spacer"); }
};

} // namespace

Spacer::Spacer() : View{makeView<SpacerNode>()} {
}

} // namespace platform::ui
