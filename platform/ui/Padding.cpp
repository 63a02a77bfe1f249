#include "platform/ui/Node.h"
#include "platform/ui/NumberText.h"
#include "platform/ui/SceneWriter.h"

#include <algorithm>

namespace platform::ui {

namespace {

EdgeInsets insetsOf(const Edge edges, const double length) {
    switch (edges) {
    case Edge::all:
        return {length, length, length, length};
    case Edge::horizontal:
        return {0, length, 0, length};
    case Edge::vertical:
        return {length, 0, length, 0};
    case Edge::trailing:
        return {0, 0, 0, length};
    }
    return {};
}

const char* nameOf(const Edge edges) {
    switch (edges) {
    case Edge::all:
        return "all";
    case Edge::horizontal:
        return "horizontal";
    case Edge::vertical:
        return "vertical";
    case Edge::trailing:
        return "trailing";
    }
    return "";
}

class PaddingLayout : public WrappingLayoutNode {
public:
    PaddingLayout(std::unique_ptr<LayoutNode> content, const EdgeInsets insets)
        : WrappingLayoutNode{std::move(content)}, insets_{insets} {}

    void place(const Point origin, const Proposal& proposal, SceneWriter& writer) override {
        content().place({origin.x + insets_.leading, origin.y + insets_.top}, inside(proposal), writer);
    }

protected:
    Size measure(const Proposal& proposal) override {
        const Size own = content().size(inside(proposal));
        return {sumOf(own.width, insets_.leading + insets_.trailing), sumOf(own.height, insets_.top + insets_.bottom)};
    }

private:
    static std::optional<double> less(const std::optional<double> length, const double by) {
        return length ? std::optional{std::max(0.0, *length - by)} : std::nullopt;
    }
    Proposal inside(const Proposal& proposal) const {
        return {less(proposal.width, insets_.leading + insets_.trailing),
                less(proposal.height, insets_.top + insets_.bottom)};
    }

    EdgeInsets insets_;
};

class PaddingNode : public ModifierNode {
public:
    PaddingNode(View content, const Edge edges, const double length)
        : ModifierNode{std::move(content)}, edges_{edges}, length_{length} {}

protected:
    std::unique_ptr<LayoutNode> wrap(std::unique_ptr<LayoutNode> content, const Environment&) const override {
        return std::make_unique<PaddingLayout>(std::move(content), insetsOf(edges_, length_));
    }
    std::string text() const override { return std::string{"padding "} + nameOf(edges_) + " " + textOf(length_); }

private:
    Edge edges_;
    double length_;
};

} // namespace

View View::padding(const Edge edges, const double length) const {
    return makeView<PaddingNode>(*this, edges, length);
}

} // namespace platform::ui
