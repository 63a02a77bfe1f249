#pragma once

#include "model/SysExtInfo.h"
#include "platform/ui/View.h"

#include <cstdint>
#include <functional>
#include <string>

namespace views {

/// One extension: its icon, name and state, the action that fits it, and a menu. Draws the record that it is given
/// and hands each action to a callback, which takes the extension's bundle identifier. A callback is called on the
/// main thread, once for each press, and may outlive the card.
struct CardView {
    model::SysExtInfo sei;
    /// For "Activate" and "Upgrade" alike.
    std::function<void(const std::string& id)> activate;
    std::function<void(const std::string& id)> deactivate;
    std::function<void()> enumerate;
    /// The application's own build, which is the build of the extensions that it carries.
    std::int64_t version;

    platform::ui::View body() const;

private:
    platform::ui::View row() const;
    platform::ui::View icon() const;
    platform::ui::View textBlock() const;
    /// "Activate", or "Upgrade" where an older build is enabled, or nothing.
    platform::ui::View actionSlot() const;
    platform::ui::View actionButton(const char* title) const;
    platform::ui::View menu() const;
};

} // namespace views
