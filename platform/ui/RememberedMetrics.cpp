#include "platform/ui/RememberedMetrics.h"

#include <utility>

namespace platform::ui {

namespace {
constexpr std::size_t mostTexts = 256;
}

Size RememberedMetrics::textSize(const std::string& text, const Font font) const {
    Key key{font.style, font.weight, text};
    if (const auto known = sizes_.find(key); known != sizes_.end()) return known->second;
    if (sizes_.size() >= mostTexts) sizes_.clear();
    return sizes_.emplace(std::move(key), source_.textSize(text, font)).first->second;
}

} // namespace platform::ui
