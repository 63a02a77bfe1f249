#include "simulator/core/Copy.h"

#include <cstddef>

namespace simulator {

std::string_view nameOf(Category category) {
    for (const CategoryRow& row : categories) {
        if (row.category == category) return row.name;
    }
    return {};
}

std::optional<Category> categoryNamed(std::string_view name) {
    for (const CategoryRow& row : categories) {
        if (row.name == name) return row.category;
    }
    return std::nullopt;
}

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

bool isWaiting(CopyState state) {
    return state == CopyState::waitingForUser;
}

bool isBeingRemoved(CopyState state) {
    return state == CopyState::terminatingForUninstall;
}

bool isReported(CopyState state) {
    return describe(state).reported;
}

std::string textOf(const Version& version) {
    return version.shortVersion + "/" + version.version;
}

} // namespace simulator
