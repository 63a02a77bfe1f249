#include "platform/ui/StackLayout.h"

#include "platform/ui/LayoutNode.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace platform::ui {

namespace {

std::vector<double> ownLengths(const std::vector<StackItem>& items) {
    std::vector<double> lengths;
    lengths.reserve(items.size());
    for (const StackItem& item : items)
        lengths.push_back(item.spacerMinimum ? *item.spacerMinimum : item.lengthFor(std::nullopt));
    return lengths;
}

std::vector<std::size_t> indicesOf(const std::vector<StackItem>& items, const bool spacers) {
    std::vector<std::size_t> indices;
    for (std::size_t i = 0; i < items.size(); ++i)
        if (items[i].spacerMinimum.has_value() == spacers) indices.push_back(i);
    return indices;
}

std::vector<std::size_t> byFlexibility(const std::vector<StackItem>& items) {
    std::vector<double> flexibility(items.size());
    auto indices = indicesOf(items, false);
    for (const std::size_t i : indices)
        flexibility[i] = items[i].lengthFor(greatestFiniteMagnitude) - items[i].lengthFor(0.0);
    std::stable_sort(indices.begin(), indices.end(),
                     [&](const std::size_t a, const std::size_t b) { return flexibility[a] < flexibility[b]; });
    return indices;
}

} // namespace

std::vector<double> stackLengths(const std::vector<StackItem>& items, const std::optional<double> length,
                                 const double spacing) {
    if (!length) return ownLengths(items);
    const auto spacers = indicesOf(items, true);
    const auto others = byFlexibility(items);
    const double minimums =
        std::accumulate(spacers.begin(), spacers.end(), 0.0,
                        [&](const double sum, const std::size_t i) { return sum + *items[i].spacerMinimum; });

    std::vector<double> lengths(items.size());
    double left = *length - spacing - minimums;
    for (std::size_t done = 0; done < others.size(); ++done) {
        const double share = std::max(0.0, left / static_cast<double>(others.size() - done));
        lengths[others[done]] = items[others[done]].lengthFor(share);
        left -= lengths[others[done]];
    }
    left += minimums;
    for (std::size_t done = 0; done < spacers.size(); ++done) {
        const double share = left / static_cast<double>(spacers.size() - done);
        lengths[spacers[done]] = std::max(*items[spacers[done]].spacerMinimum, share);
        left -= lengths[spacers[done]];
    }
    return lengths;
}

} // namespace platform::ui
