#pragma once

#include "model/DriverLoadingStateMachine.h"

#include <array>
#include <ostream>

namespace model {

inline constexpr std::array allStates{
    DriverLoadingStateMachine::State::blank,        DriverLoadingStateMachine::State::unloaded,
    DriverLoadingStateMachine::State::activating,   DriverLoadingStateMachine::State::needsApproval,
    DriverLoadingStateMachine::State::activated,    DriverLoadingStateMachine::State::activatedUponReboot,
    DriverLoadingStateMachine::State::requestError, DriverLoadingStateMachine::State::deactivating,
};

inline const char* nameOf(const DriverLoadingStateMachine::State state) {
    constexpr std::array names{"Blank",         "Unloaded",    "Activating",
                               "NeedsApproval", "Activated",   "ActivatedUponReboot",
                               "RequestError",  "Deactivating"};
    return names.at(static_cast<std::size_t>(state));
}

inline const char* nameOf(const LoadingTrigger trigger) {
    constexpr std::array names{"Activate", "Deactivate", "NeedsApproval", "Completed", "AfterReboot", "Failed"};
    return names.at(static_cast<std::size_t>(trigger));
}

/// Found by GoogleTest, which then names the state in a failure.
inline void PrintTo(const DriverLoadingStateMachine::State state, std::ostream* out) {
    *out << nameOf(state);
}

} // namespace model
