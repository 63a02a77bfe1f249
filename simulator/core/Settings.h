#pragma once

#include "simulator/core/Profile.h"
#include "simulator/core/Switch.h"

#include <map>
#include <string>
#include <vector>

namespace simulator {

/// How the simulated machine is set up. A reset leaves it as it is.
struct Settings {
    std::vector<std::string> applicationsFolders{"/Applications"};
    bool developerMode = false;
    Profile profile;
    /// Only those that are not at their default.
    std::map<Switch, std::string> switches;

    std::string_view valueOf(Switch which) const;
    bool isDefault(Switch which) const { return switches.count(which) == 0; }
    /// value: one that the switch takes.
    void set(Switch which, std::string_view value);

    friend bool operator==(const Settings&, const Settings&) = default;
};

} // namespace simulator
