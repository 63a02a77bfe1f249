#include "platform/ui/Stacks.h"

#include "platform/ui/Node.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

// Stacks and their special members: spacers, dividers, groups, rows.

namespace platform::ui {

namespace {

constexpr double defaultSpacing = 8;
constexpr double spacingBetweenTexts = 2;
constexpr double leastSpacer = 8;
constexpr double dividerThickness = 1;
constexpr Color dividerColor{0, 0, 0, 0.1};

/// The members that share a length, in that order: the flexibility of each, and its index.
using Sharers = std::vector<std::pair<double, std::size_t>>;

Sharers sharersAmong(const std::vector<StackItem>& items, const bool spacers) {
    Sharers sharers;
    sharers.reserve(items.size());
    for (std::size_t i = 0; i < items.size(); ++i)
        if (items[i].spacerMinimum.has_value() == spacers) sharers.emplace_back(0.0, i);
    return sharers;
}

Sharers byFlexibility(const std::vector<StackItem>& items) {
    auto sharers = sharersAmong(items, false);
    if (sharers.size() < 2) return sharers;
    for (auto& [flexibility, i] : sharers)
        flexibility = items[i].lengthFor(greatestFiniteMagnitude) - items[i].lengthFor(0.0);
    std::sort(sharers.begin(), sharers.end());
    return sharers;
}

/// Offers each of them an equal share of what its predecessors have left of `left`.
void share(const std::vector<StackItem>& items, const Sharers& sharers, double& left, std::vector<double>& lengths) {
    auto remaining = static_cast<double>(sharers.size());
    for (const auto& [flexibility, i] : sharers) {
        lengths[i] = items[i].lengthFor(std::max(0.0, left / remaining--));
        left -= lengths[i];
    }
}

/// Of a Size or a Proposal.
template <typename Pair>
auto along(const Axis axis, const Pair& pair) {
    return axis == Axis::horizontal ? pair.width : pair.height;
}
template <typename Pair>
auto across(const Axis axis, const Pair& pair) {
    return axis == Axis::horizontal ? pair.height : pair.width;
}
/// A Proposal, Size or Point from its parts along and across an axis.
template <typename Pair, typename Part>
Pair pair(const Axis axis, const Part along, const Part across) {
    return axis == Axis::horizontal ? Pair{along, across} : Pair{across, along};
}

double spacingBetween(const Axis axis, const Box& before, const Box& after) {
    if (before.spacerMinimum() || after.spacerMinimum()) return 0;
    return axis == Axis::vertical && before.isText() && after.isText() ? spacingBetweenTexts : defaultSpacing;
}

/// Several views that are members of the enclosing stack.
class GroupNode : public Node {
public:
    using Node::Node;

    void resolve(const Surroundings& environment, std::vector<Box>& boxes) const override {
        resolveChildren(environment, boxes);
    }
};

/// The same, each child a row.
class RowsNode : public Node {
public:
    using Node::Node;

    void resolve(const Surroundings& environment, std::vector<Box>& boxes) const override {
        auto at = boxes.size();
        resolveChildren(environment, boxes);
        for (; at < boxes.size(); ++at)
            boxes[at].beginRow();
    }
};

/// A horizontal or vertical stack.
class LinearStack : public Node {
public:
    LinearStack(const Axis axis, const Alignment alignment, std::vector<View> children)
        : Node{std::move(children)}, axis_{axis}, alignment_{alignment} {}

    void resolve(const Surroundings& environment, std::vector<Box>& boxes) const override {
        auto inside = std::make_shared<Environment>(*environment);
        inside->stackAxis = axis_;
        Node::resolve(std::move(inside), boxes);
        boxes.back().rememberAllSizes();
    }
    Size size(Box& box, const Proposal& proposal) const override {
        const Line line = arrange(box, proposal);
        double width = 0;
        for (std::size_t i = 0; i < line.lengths.size(); ++i)
            width = std::max(width, across(axis_, box.inside()[i].size(offered(line.lengths[i], proposal))));
        const double length = std::accumulate(line.lengths.begin(), line.lengths.end(), spacingIn(line.gaps), sumOf);
        return pair<Size>(axis_, length, width);
    }
    void place(Box& box, const Rect& frame, const Proposal& proposal, SceneWriter& scene) const override {
        const Line line = arrange(box, proposal);
        double position = 0;
        for (std::size_t i = 0; i < line.lengths.size(); ++i) {
            Box& member = box.inside()[i];
            const Proposal own = offered(line.lengths[i], proposal);
            const Point aligned = offset(alignment_, frame.size(), member.size(own));
            const double side = axis_ == Axis::horizontal ? aligned.y : aligned.x;
            member.place(frame.origin() + pair<Point>(axis_, position, side), own, scene);
            position = sumOf(position, line.lengths[i] + line.gaps[i]);
        }
    }

private:
    struct Line {
        std::vector<double> lengths;
        /// What is left free after each member; nothing after the last.
        std::vector<double> gaps;
    };

    Line arrange(Box& box, const Proposal& proposal) const {
        const auto lengthOf = [&](Box& member, const std::optional<double> length) {
            return along(axis_, member.size(offered(length, proposal)));
        };
        std::vector<StackItem> items;
        items.reserve(box.inside().size());
        for (Box& member : box.inside()) {
            // Two references fit into a function without an allocation.
            items.push_back(
                {member.spacerMinimum(), [&member, &lengthOf](const auto length) { return lengthOf(member, length); }});
        }
        auto gaps = gapsBetween(box.inside());
        return {stackLengths(items, along(axis_, proposal), spacingIn(gaps)), std::move(gaps)};
    }
    /// To a member, of what the stack is offered.
    Proposal offered(const std::optional<double> length, const Proposal& proposal) const {
        return pair<Proposal>(axis_, length, across(axis_, proposal));
    }
    std::vector<double> gapsBetween(const std::vector<Box>& members) const {
        std::vector<double> gaps(members.size());
        for (std::size_t i = 1; i < members.size(); ++i)
            gaps[i - 1] = spacingBetween(axis_, members[i - 1], members[i]);
        return gaps;
    }
    static double spacingIn(const std::vector<double>& gaps) { return std::accumulate(gaps.begin(), gaps.end(), 0.0); }

    Axis axis_;
    Alignment alignment_;
};

/// Its children on top of each other.
class DepthStack : public Node {
public:
    DepthStack(const Alignment alignment, std::vector<View> children)
        : Node{std::move(children)}, alignment_{alignment} {}

    Size size(Box& box, const Proposal& proposal) const override {
        Size largest;
        for (Box& member : box.inside()) {
            const Size size = member.size(proposal);
            largest = {std::max(largest.width, size.width), std::max(largest.height, size.height)};
        }
        return largest;
    }
    void place(Box& box, const Rect& frame, const Proposal& proposal, SceneWriter& scene) const override {
        for (Box& member : box.inside())
            member.place(frame.origin() + offset(alignment_, frame.size(), member.size(proposal)), proposal, scene);
    }

private:
    Alignment alignment_;
};

class SpacerNode : public Node {
public:
    std::optional<double> spacerMinimum() const override { return leastSpacer; }
    Size size(Box& box, const Proposal& proposal) const override {
        const Axis axis = box.environment().stackAxis;
        return pair<Size>(axis, std::max(leastSpacer, along(axis, proposal).value_or(0)), 0.0);
    }
};

class DividerNode : public Node {
public:
    Size size(Box& box, const Proposal& proposal) const override {
        const Axis axis = box.environment().stackAxis;
        return pair<Size>(axis, dividerThickness, across(axis, proposal).value_or(0));
    }
    void place(Box&, const Rect& frame, const Proposal&, SceneWriter& scene) const override {
        scene.add({Fill{frame, ShapeKind::rectangle, dividerColor}});
    }
};

std::vector<View> rowsOf(const std::size_t count, const std::function<View(std::size_t)>& row) {
    std::vector<View> rows;
    for (std::size_t index = 0; index < count; ++index)
        rows.push_back(row(index));
    return rows;
}

} // namespace

std::vector<double> stackLengths(const std::vector<StackItem>& items, const std::optional<double> length,
                                 const double spacing) {
    std::vector<double> lengths(items.size());
    for (std::size_t i = 0; !length && i < items.size(); ++i)
        lengths[i] = items[i].lengthFor(std::nullopt);
    if (!length) return lengths;
    const auto spacers = sharersAmong(items, true);
    double minimums = 0;
    for (const auto& [flexibility, i] : spacers)
        minimums += *items[i].spacerMinimum;
    double left = *length - spacing - minimums;
    share(items, byFlexibility(items), left, lengths);
    left += minimums;
    share(items, spacers, left, lengths);
    return lengths;
}

HStack::HStack(VerticalAlignment, std::vector<View> children)
    : View{makeView<LinearStack>(Axis::horizontal, Alignment::center, std::move(children))} {
}

VStack::VStack(const HorizontalAlignment alignment, std::vector<View> children)
    : View{makeView<LinearStack>(Axis::vertical, alignment, std::move(children))} {
}

ZStack::ZStack(const Alignment alignment, std::vector<View> children)
    : View{makeView<DepthStack>(alignment, std::move(children))} {
}

Group::Group(std::vector<View> children) : View{makeView<GroupNode>(std::move(children))} {
}

ForEach::ForEach(const std::size_t count, const std::function<View(std::size_t)>& row)
    : View{makeView<RowsNode>(rowsOf(count, row))} {
}

Spacer::Spacer() : View{makeView<SpacerNode>()} {
}

Divider::Divider() : View{makeView<DividerNode>()} {
}

} // namespace platform::ui
