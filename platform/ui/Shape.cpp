#include "platform/ui/Shape.h"

#include "platform/ui/Node.h"
#include "platform/ui/NumberText.h"
#include "platform/ui/SceneWriter.h"

namespace platform::ui {

namespace {

class StrokeLayout : public LayoutNode {
public:
    StrokeLayout(const Color color, const double lineWidth) : color_{color}, lineWidth_{lineWidth} {}

    void place(const Point origin, const Proposal& proposal, SceneWriter& writer) override {
        const Size area = size(proposal);
        writer.add({Stroke{{origin.x, origin.y, area.width, area.height}, ShapeKind::circle, color_, lineWidth_}});
    }

protected:
    Size measure(const Proposal& proposal) override {
        return {proposal.width.value_or(0), proposal.height.value_or(0)};
    }

private:
    Color color_;
    double lineWidth_;
};

class StrokeNode : public Node {
public:
    StrokeNode(const Color color, const double lineWidth) : color_{color}, lineWidth_{lineWidth} {}

    void resolve(const Environment&, std::vector<LayoutMember>& members) const override {
        members.push_back({std::make_unique<StrokeLayout>(color_, lineWidth_)});
    }
    void describe(Description& description) const override {
        description.line("Circle");
        description.modifier("stroke " + textOf(color_) + " " + textOf(lineWidth_));
    }

private:
    Color color_;
    double lineWidth_;
};

class ClipLayout : public WrappingLayoutNode {
public:
    ClipLayout(std::unique_ptr<LayoutNode> content, const ShapeKind shape)
        : WrappingLayoutNode{std::move(content)}, shape_{shape} {}

    void place(const Point origin, const Proposal& proposal, SceneWriter& writer) override {
        const Size area = size(proposal);
        auto inside = writer.collect([&] { content().place(origin, proposal, writer); });
        writer.add({Clip{{origin.x, origin.y, area.width, area.height}, shape_, std::move(inside)}});
    }

private:
    ShapeKind shape_;
};

class ClipNode : public ModifierNode {
public:
    ClipNode(View content, const ShapeKind shape) : ModifierNode{std::move(content)}, shape_{shape} {}

protected:
    std::unique_ptr<LayoutNode> wrap(std::unique_ptr<LayoutNode> content, const Environment&) const override {
        return std::make_unique<ClipLayout>(std::move(content), shape_);
    }
    std::string text() const override { return std::string{"clipShape "} + nameOf(shape_); }

private:
    ShapeKind shape_;
};

} // namespace

View Circle::stroke(const Color color, const double lineWidth) const {
    return makeView<StrokeNode>(color, lineWidth);
}

View View::clipShape(const Capsule&) const {
    return makeView<ClipNode>(*this, ShapeKind::capsule);
}

View View::clipShape(const Circle&) const {
    return makeView<ClipNode>(*this, ShapeKind::circle);
}

} // namespace platform::ui
