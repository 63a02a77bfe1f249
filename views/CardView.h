#pragma once

#include "model/SysExtInfo.h"
#include "platform/ui/View.h"

#include <cstdint>
#include <functional>
#include <string>

namespace views {

/// One extension: icon, name, state, a button for the possible action, and a menu. The callbacks take the extension's
/// bundle identifier. They are called on the main thread, once per press, and can outlive the card.
struct CardView {
    model::SysExtInfo sei;
    /// For "Activate" and "Upgrade".
    std::function<void(const std::string& id)> activate;
    std::function<void(const std::string& id)> deactivate;
    std::function<void()> enumerate;
    /// The application's own build, which stands for the builds of its extensions.
    std::int64_t version;

    platform::ui::View body() const;

private:
    platform::ui::View row() const;
    platform::ui::View icon() const;
    platform::ui::View textBlock() const;
    /// "Activate", "Upgrade" if an older build is enabled, or nothing.
    platform::ui::View actionSlot() const;
    platform::ui::View actionButton(const char* title) const;
    platform::ui::View menu() const;
};

} // namespace views
