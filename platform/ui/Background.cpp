#include "platform/ui/Node.h"
#include "platform/ui/NumberText.h"
#include "platform/ui/SceneWriter.h"

namespace platform::ui {

namespace {

class ColorBackgroundLayout : public WrappingLayoutNode {
public:
    ColorBackgroundLayout(std::unique_ptr<LayoutNode> content, const Color color, const SafeAreaEdges edges)
        : WrappingLayoutNode{std::move(content)}, color_{color}, edges_{edges} {}

    void place(const Point origin, const Proposal& proposal, SceneWriter& writer) override {
        const Size area = size(proposal);
        const Rect own{origin.x, origin.y, area.width, area.height};
        const Rect covered = edges_ == SafeAreaEdges::all ? writer.underSafeArea(own) : own;
        writer.add({Fill{covered, ShapeKind::rectangle, color_}});
        content().place(origin, proposal, writer);
    }

private:
    Color color_;
    SafeAreaEdges edges_;
};

class ColorBackgroundNode : public ModifierNode {
public:
    ColorBackgroundNode(View content, const Color color, const SafeAreaEdges edges)
        : ModifierNode{std::move(content)}, color_{color}, edges_{edges} {}

protected:
    std::unique_ptr<LayoutNode> wrap(std::unique_ptr<LayoutNode> content, const Environment&) const override {
        return std::make_unique<ColorBackgroundLayout>(std::move(content), color_, edges_);
    }
    std::string text() const override {
        return "background " + textOf(color_) + (edges_ == SafeAreaEdges::all ? " under safe area" : "");
    }

private:
    Color color_;
    SafeAreaEdges edges_;
};

class ViewBackgroundLayout : public WrappingLayoutNode {
public:
    ViewBackgroundLayout(std::unique_ptr<LayoutNode> content, std::unique_ptr<LayoutNode> behind)
        : WrappingLayoutNode{std::move(content)}, behind_{std::move(behind)} {}

    void place(const Point origin, const Proposal& proposal, SceneWriter& writer) override {
        const Size area = size(proposal);
        const Proposal offered{area.width, area.height};
        const Point at = offset(Alignment::center, area, behind_->size(offered));
        behind_->place({origin.x + at.x, origin.y + at.y}, offered, writer);
        content().place(origin, proposal, writer);
    }

private:
    std::unique_ptr<LayoutNode> behind_;
};

class ViewBackgroundNode : public ModifierNode {
public:
    ViewBackgroundNode(View content, View behind) : ModifierNode{std::move(content)}, behind_{std::move(behind)} {}

    void describe(Description& description) const override {
        ModifierNode::describe(description);
        description.child(behind_);
    }

protected:
    std::unique_ptr<LayoutNode> wrap(std::unique_ptr<LayoutNode> content,
                                     const Environment& environment) const override {
        return std::make_unique<ViewBackgroundLayout>(std::move(content), resolveOne(behind_, environment));
    }
    std::string text() const override { return "background of"; }

private:
    View behind_;
};

class BorderLayout : public WrappingLayoutNode {
public:
    BorderLayout(std::unique_ptr<LayoutNode> content, const Color color, const double width)
        : WrappingLayoutNode{std::move(content)}, color_{color}, width_{width} {}

    void place(const Point origin, const Proposal& proposal, SceneWriter& writer) override {
        const Size area = size(proposal);
        content().place(origin, proposal, writer);
        const Rect inset{origin.x + width_ / 2, origin.y + width_ / 2, area.width - width_, area.height - width_};
        writer.add({Stroke{inset, ShapeKind::rectangle, color_, width_}});
    }

private:
    Color color_;
    double width_;
};

class BorderNode : public ModifierNode {
public:
    BorderNode(View content, const Color color, const double width)
        : ModifierNode{std::move(content)}, color_{color}, width_{width} {}

protected:
    std::unique_ptr<LayoutNode> wrap(std::unique_ptr<LayoutNode> content, const Environment&) const override {
        return std::make_unique<BorderLayout>(std::move(content), color_, width_);
    }
    std::string text() const override { return "border " + textOf(color_) + " " + textOf(width_); }

private:
    Color color_;
    double width_;
};

} // namespace

View View::background(const Color color, const SafeAreaEdges edges) const {
    return makeView<ColorBackgroundNode>(*this, color, edges);
}

View View::background(const View& behind) const {
    return makeView<ViewBackgroundNode>(*this, behind);
}

View View::border(const Color color, const double width) const {
    return makeView<BorderNode>(*this, color, width);
}

} // namespace platform::ui
