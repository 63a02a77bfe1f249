#include "simulator/core/Switch.h"

#include <cstddef>

namespace simulator {

const SwitchRow& describe(Switch which) {
    return switches[static_cast<std::size_t>(which)];
}

std::optional<Switch> switchNamed(std::string_view name) {
    for (const SwitchRow& row : switches) {
        if (row.name == name) return row.which;
    }
    return std::nullopt;
}

} // namespace simulator
