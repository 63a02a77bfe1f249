#include "simulator/core/Settings.h"

namespace simulator {

std::string_view Settings::valueOf(Switch which) const {
    const auto found = switches.find(which);
    return found == switches.end() ? describe(which).byDefault : std::string_view{found->second};
}

void Settings::set(Switch which, std::string_view value) {
    if (value == describe(which).byDefault) {
        switches.erase(which);
    } else {
        switches[which] = value;
    }
}

} // namespace simulator
