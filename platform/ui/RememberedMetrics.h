#pragma once

#include "platform/ui/Metrics.h"

#include <map>
#include <string>
#include <tuple>

namespace platform::ui {

/// Remembers text sizes from one layout to the next. Forgets them all once there are too many to be worth keeping.
class RememberedMetrics : public Metrics {
public:
    /// `source` outlives this.
    explicit RememberedMetrics(const Metrics& source) : source_{source} {}

    Size textSize(const std::string& text, Font font) const override;
    Size imageSize(const ImageReference& image) const override { return source_.imageSize(image); }

private:
    using Key = std::tuple<TextStyle, FontWeight, std::string>;

    const Metrics& source_;
    mutable std::map<Key, Size> sizes_;
};

} // namespace platform::ui
