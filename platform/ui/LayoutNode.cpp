#include "platform/ui/LayoutNode.h"

#include <algorithm>

namespace platform::ui {

Size LayoutNode::size(const Proposal& proposal) {
    const auto known =
        std::find_if(sizes_.begin(), sizes_.end(), [&](const auto& size) { return size.first == proposal; });
    if (known != sizes_.end()) return known->second;
    const Size size = measure(proposal);
    sizes_.emplace_back(proposal, size);
    return size;
}

double sumOf(const double a, const double b) {
    return std::min(a + b, greatestFiniteMagnitude);
}

double offset(const HorizontalAlignment alignment, const double outer, const double inner) {
    switch (alignment) {
    case HorizontalAlignment::leading:
        return 0;
    case HorizontalAlignment::center:
        return outer / 2 - inner / 2;
    case HorizontalAlignment::trailing:
        return outer - inner;
    }
    return 0;
}

double offset(const VerticalAlignment alignment, const double outer, const double inner) {
    switch (alignment) {
    case VerticalAlignment::top:
        return 0;
    case VerticalAlignment::center:
        return outer / 2 - inner / 2;
    case VerticalAlignment::bottom:
        return outer - inner;
    }
    return 0;
}

Point offset(const Alignment alignment, const Size outer, const Size inner) {
    return {offset(alignment.horizontal, outer.width, inner.width),
            offset(alignment.vertical, outer.height, inner.height)};
}

} // namespace platform::ui
