#include "platform/ui/StackNode.h"

#include "platform/ui/HStack.h"
#include "platform/ui/SceneWriter.h"
#include "platform/ui/StackLayout.h"
#include "platform/ui/VStack.h"

#include <algorithm>
#include <numeric>

namespace platform::ui {

namespace {

constexpr double defaultSpacing = 8;
constexpr double spacingBetweenTexts = 2;

bool isSpacer(const LayoutMember& member) {
    return member.node->spacerMinimum().has_value();
}
bool isText(const LayoutMember& member) {
    return member.node->core().isText();
}

double spacingBetween(const Axis axis, const LayoutMember& before, const LayoutMember& after) {
    if (isSpacer(before) || isSpacer(after)) return 0;
    if (axis == Axis::vertical && isText(before) && isText(after)) return spacingBetweenTexts;
    return defaultSpacing;
}

std::string nameOf(const VerticalAlignment alignment) {
    constexpr const char* names[] = {"top", "center", "bottom"};
    return names[static_cast<std::size_t>(alignment)];
}

std::string nameOf(const HorizontalAlignment alignment) {
    constexpr const char* names[] = {"leading", "center", "trailing"};
    return names[static_cast<std::size_t>(alignment)];
}

class LinearStackNode : public StackNode {
public:
    LinearStackNode(const Axis axis, const Alignment alignment, std::string name, std::vector<View> children)
        : StackNode{std::move(name), std::move(children)}, axis_{axis}, alignment_{alignment} {}

    void resolve(const Environment& environment, std::vector<LayoutMember>& members) const override {
        Environment inside = environment;
        inside.stackAxis = axis_;
        members.push_back({std::make_unique<LinearStackLayout>(axis_, alignment_, this->members(inside))});
    }

private:
    Axis axis_;
    Alignment alignment_;
};

} // namespace

HStack::HStack(const VerticalAlignment alignment, std::vector<View> children)
    : View{makeView<LinearStackNode>(Axis::horizontal, Alignment{HorizontalAlignment::center, alignment},
                                     "HStack " + nameOf(alignment), std::move(children))} {
}

VStack::VStack(const HorizontalAlignment alignment, std::vector<View> children)
    : View{makeView<LinearStackNode>(Axis::vertical, Alignment{alignment, VerticalAlignment::center},
                                     "VStack " + nameOf(alignment), std::move(children))} {
}

void resolveAt(const std::uint32_t step, const View& view, const Environment& environment,
               std::vector<LayoutMember>& members) {
    std::vector<LayoutMember> inner;
    view.node().resolve(environment, inner);
    for (LayoutMember& member : inner) {
        member.steps.insert(member.steps.begin(), step);
        if (member.rowLength > 0) ++member.rowLength;
        members.push_back(std::move(member));
    }
}

std::vector<LayoutMember> StackNode::members(const Environment& environment) const {
    std::vector<LayoutMember> members;
    std::uint32_t step = 0;
    for (const View& child : children_)
        resolveAt(step++, child, environment, members);
    return members;
}

std::vector<double> LinearStackLayout::spacings() const {
    std::vector<double> spacings;
    for (std::size_t i = 1; i < members_.size(); ++i)
        spacings.push_back(spacingBetween(axis_.axis, members_[i - 1], members_[i]));
    return spacings;
}

LinearStackLayout::Line LinearStackLayout::arrange(const Proposal& proposal) {
    std::vector<StackItem> items;
    for (const LayoutMember& member : members_) {
        items.push_back({member.node->spacerMinimum(), [this, &member, &proposal](const std::optional<double> along) {
                             return axis_.along(member.node->size(axis_.proposal(along, axis_.across(proposal))));
                         }});
    }
    auto between = spacings();
    const double spacing = std::accumulate(between.begin(), between.end(), 0.0);
    return {stackLengths(items, axis_.along(proposal), spacing), std::move(between)};
}

Size LinearStackLayout::measure(const Proposal& proposal) {
    const Line line = arrange(proposal);
    const double spacing = std::accumulate(line.spacings.begin(), line.spacings.end(), 0.0);
    double across = 0;
    for (std::size_t i = 0; i < members_.size(); ++i) {
        const auto offered = axis_.proposal(line.lengths[i], axis_.across(proposal));
        if (!isSpacer(members_[i])) across = std::max(across, axis_.across(members_[i].node->size(offered)));
    }
    return axis_.size(std::accumulate(line.lengths.begin(), line.lengths.end(), spacing, sumOf), across);
}

double LinearStackLayout::offsetAcross(const double outer, const double inner) const {
    return axis_.axis == Axis::horizontal ? offset(alignment_.vertical, outer, inner)
                                          : offset(alignment_.horizontal, outer, inner);
}

void LinearStackLayout::place(const Point origin, const Proposal& proposal, SceneWriter& writer) {
    const Line line = arrange(proposal);
    const double width = axis_.across(size(proposal));
    double along = 0;
    for (std::size_t i = 0; i < members_.size(); ++i) {
        LayoutNode& node = *members_[i].node;
        const Proposal offered = axis_.proposal(line.lengths[i], axis_.across(proposal));
        if (!isSpacer(members_[i])) {
            const Point at = axis_.point(along, offsetAcross(width, axis_.across(node.size(offered))));
            writer.at(members_[i].steps, members_[i].rowLength, [&] {
                node.place({origin.x + at.x, origin.y + at.y}, offered, writer);
            });
        }
        along = sumOf(along, line.lengths[i] + (i < line.spacings.size() ? line.spacings[i] : 0));
    }
}

} // namespace platform::ui
