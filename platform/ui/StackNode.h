#pragma once

#include "platform/ui/Node.h"

#include <string>
#include <vector>

namespace platform::ui {

/// What the stacks have in common: a name, children and their members.
class StackNode : public Node {
public:
    StackNode(std::string name, std::vector<View> children) : name_{std::move(name)}, children_{std::move(children)} {}

    void describe(Description& description) const override {
        description.line(name_);
        description.children(children_);
    }
    void visitChildren(const std::function<void(const View&)>& visit) const override {
        for (const View& child : children_)
            visit(child);
    }

protected:
    /// The members of all children; each member's steps begin with the position of its child.
    std::vector<LayoutMember> members(const Environment& environment) const;

private:
    std::string name_;
    std::vector<View> children_;
};

/// Appends what `view` lays out, led to by `step`.
void resolveAt(std::uint32_t step, const View& view, const Environment& environment,
               std::vector<LayoutMember>& members);

/// Size and place along and across an axis.
struct AxisView {
    Axis axis;
    double along(const Size size) const { return axis == Axis::horizontal ? size.width : size.height; }
    double across(const Size size) const { return axis == Axis::horizontal ? size.height : size.width; }
    std::optional<double> along(const Proposal& offered) const {
        return axis == Axis::horizontal ? offered.width : offered.height;
    }
    std::optional<double> across(const Proposal& offered) const {
        return axis == Axis::horizontal ? offered.height : offered.width;
    }
    Proposal proposal(const std::optional<double> along, const std::optional<double> across) const {
        return axis == Axis::horizontal ? Proposal{along, across} : Proposal{across, along};
    }
    Size size(const double along, const double across) const {
        return axis == Axis::horizontal ? Size{along, across} : Size{across, along};
    }
    Point point(const double along, const double across) const {
        return axis == Axis::horizontal ? Point{along, across} : Point{across, along};
    }
};

/// A horizontal or vertical stack of members.
class LinearStackLayout : public LayoutNode {
public:
    LinearStackLayout(Axis axis, Alignment alignment, std::vector<LayoutMember> members)
        : axis_{axis}, alignment_{alignment}, members_{std::move(members)} {}

    void place(Point origin, const Proposal& proposal, SceneWriter& writer) override;

protected:
    Size measure(const Proposal& proposal) override;

private:
    struct Line {
        std::vector<double> lengths;
        std::vector<double> spacings;
    };
    Line arrange(const Proposal& proposal);
    std::vector<double> spacings() const;
    double offsetAcross(double outer, double inner) const;

    AxisView axis_;
    Alignment alignment_;
    std::vector<LayoutMember> members_;
};

} // namespace platform::ui
