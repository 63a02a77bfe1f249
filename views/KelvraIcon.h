#pragma once

#include "platform/ui/View.h"

#include <string>

namespace views {

/// The icon of an extension, 40 by 40: its default or its dark variant.
struct KelvraIcon {
    /// An asset; the dark variant's is the same name with "Dark" behind it. A missing one leaves the shape around it.
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
