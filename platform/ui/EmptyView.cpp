#include "platform/ui/EmptyView.h"

#include "platform/ui/Node.h"

namespace platform::ui {

namespace {

class EmptyNode : public Node {
public:
    void resolve(const Environment&, std::vector<LayoutMember>&) const override {}
    void describe(Description& description) const override { description.line("EmptyView"); }
};

} // namespace

EmptyView::EmptyView() : View{makeView<EmptyNode>()} {
}

} // namespace platform::ui
