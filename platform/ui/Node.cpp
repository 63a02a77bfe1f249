#include "platform/ui/Node.h"

#include <algorithm>

namespace platform::ui {

void Node::resolve(const Surroundings& environment, std::vector<Box>& boxes) const {
    std::vector<Box> inside;
    resolveChildren(environment, inside);
    boxes.emplace_back(shared_from_this(), environment, std::move(inside));
}

void Node::resolveChildren(const Surroundings& environment, std::vector<Box>& boxes) const {
    for (std::uint32_t step = 0; step < children_.size(); ++step) {
        auto at = boxes.size();
        children_[step].node().resolve(environment, boxes);
        for (; at < boxes.size(); ++at)
            boxes[at].standAt(step);
    }
}

void Modifier::resolve(const Surroundings& environment, std::vector<Box>& boxes) const {
    std::vector<Box> inside;
    for (std::uint32_t step = 0; step < children().size(); ++step) {
        appendBoxOf(children()[step], environment, inside);
        inside.back().standAt(step);
    }
    boxes.emplace_back(shared_from_this(), environment, std::move(inside));
}

Size Box::size(const Proposal& proposal) {
    const auto known =
        std::find_if(sizes_.begin(), sizes_.end(), [&](const auto& size) { return size.first == proposal; });
    if (known != sizes_.end()) return known->second;
    const Size chosen = node_->size(*this, proposal);
    const Size size{std::max(chosen.width, 0.0), std::max(chosen.height, 0.0)};
    if (!remembersAllSizes_) sizes_.clear();
    sizes_.emplace_back(proposal, size);
    return size;
}

void appendBoxOf(const View& view, const Surroundings& environment, std::vector<Box>& boxes) {
    const auto count = boxes.size();
    view.node().resolve(environment, boxes);
    if (boxes.size() == count + 1 && boxes.back().isAlone()) return;
    boxes.erase(boxes.begin() + static_cast<std::ptrdiff_t>(count), boxes.end());
    VStack{HorizontalAlignment::center, view}.node().resolve(environment, boxes);
}

double offset(const HorizontalAlignment alignment, const double outer, const double inner) {
    if (alignment == HorizontalAlignment::leading) return 0;
    return alignment == HorizontalAlignment::center ? outer / 2 - inner / 2 : outer - inner;
}

} // namespace platform::ui
