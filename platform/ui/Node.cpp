#include "platform/ui/Node.h"

#include <algorithm>

namespace platform::ui {

void Node::resolve(const Environment& environment, std::vector<Box>& boxes) const {
    std::vector<Box> inside;
    resolveChildren(environment, inside);
    boxes.emplace_back(shared_from_this(), environment, std::move(inside));
}

void Node::resolveChildren(const Environment& environment, std::vector<Box>& boxes) const {
    for (std::uint32_t step = 0; step < children_.size(); ++step) {
        auto at = boxes.size();
        children_[step].node().resolve(environment, boxes);
        for (; at < boxes.size(); ++at)
            boxes[at].standAt(step);
    }
}

void Modifier::resolve(const Environment& environment, std::vector<Box>& boxes) const {
    std::vector<Box> inside;
    for (std::uint32_t step = 0; step < children().size(); ++step) {
        inside.push_back(boxOf(children()[step], environment));
        inside.back().standAt(step);
    }
    boxes.emplace_back(shared_from_this(), environment, std::move(inside));
}

Size Modifier::size(Box& box, const Proposal& proposal) const {
    return box.content().size(proposal);
}

void Modifier::place(Box& box, const Rect& frame, const Proposal& proposal, SceneWriter& scene) const {
    box.content().place(frame.origin(), proposal, scene);
}

bool Modifier::isText(const Box& box) const {
    return box.content().isText();
}

Size Box::size(const Proposal& proposal) {
    const auto known =
        std::find_if(sizes_.begin(), sizes_.end(), [&](const auto& size) { return size.first == proposal; });
    if (known != sizes_.end()) return known->second;
    const Size chosen = node_->size(*this, proposal);
    const Size size{std::max(chosen.width, 0.0), std::max(chosen.height, 0.0)};
    sizes_.emplace_back(proposal, size);
    return size;
}

void Box::place(const Point origin, const Proposal& proposal, SceneWriter& scene) {
    const Size own = size(proposal);
    scene.at(path_, [&] { node_->place(*this, {origin.x, origin.y, own.width, own.height}, proposal, scene); });
}

void Box::standAt(const std::uint32_t step) {
    path_.steps.insert(path_.steps.begin(), step);
    if (path_.rowLength > 0) ++path_.rowLength;
}

Box boxOf(const View& view, const Environment& environment) {
    std::vector<Box> boxes;
    view.node().resolve(environment, boxes);
    if (boxes.size() == 1 && boxes.front().isAlone()) return std::move(boxes.front());
    return boxOf(VStack{HorizontalAlignment::center, view}, environment);
}

double offset(const HorizontalAlignment alignment, const double outer, const double inner) {
    if (alignment == HorizontalAlignment::leading) return 0;
    return alignment == HorizontalAlignment::center ? outer / 2 - inner / 2 : outer - inner;
}

Point offset(const Alignment alignment, const Size outer, const Size inner) {
    return {offset(alignment, outer.width, inner.width), offset(Alignment::center, outer.height, inner.height)};
}

} // namespace platform::ui
