#include "simulator/core/CopyState.h"

#include <cstddef>

namespace simulator {

const CopyStateRow& describe(CopyState state) {
    return copyStates[static_cast<std::size_t>(state)];
}

std::optional<CopyState> copyStateWithText(std::string_view text) {
    for (const CopyStateRow& row : copyStates) {
        if (row.text == text) return row.state;
    }
    return std::nullopt;
}

std::optional<CopyState> stateForCondition(std::string_view condition) {
    if (condition == "waiting") return CopyState::waitingForUser;
    if (condition == "enabled") return CopyState::enabled;
    if (condition == "disabled") return CopyState::disabled;
    if (condition == "uninstalling") return CopyState::terminated;
    return std::nullopt;
}

bool isInstalled(CopyState state) {
    return state == CopyState::waitingForUser || isActivated(state);
}

bool isActivated(CopyState state) {
    return state == CopyState::enabled || state == CopyState::disabled;
}

} // namespace simulator
