#pragma once

#include "platform/ui/View.h"

#include <string>

namespace views {

/// The icon of an extension, 40 by 40: its default or its dark variant.
struct KelvraIcon {
    /// The asset's name; the dark variant adds "Dark". If the asset is missing, only the shape is drawn.
    std::string iconName;
    bool dark;

    platform::ui::View body() const;
};

/// The image in a black ring.
struct KelvraIconDefault {
    std::string iconName;

    platform::ui::View body() const;
};

/// The image's dark variant on a black disc.
struct KelvraIconDark {
    std::string iconName;

    platform::ui::View body() const;
};

} // namespace views
