#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace model {

/// Scopes the state of the model's latest request. All extensions share one state.
class DriverLoadingStateMachine {
public:
    DriverLoadingStateMachine() = delete;

    enum class State : std::uint8_t {
        /// No request is open: initially, after an action was undone, and after a deactivation.
        blank,
        /// No transition leads here.
        unloaded,
        activating,
        /// The user must approve the extension.
        needsApproval,
        activated,
        /// A request will complete after the next restart.
        activatedUponReboot,
        /// A request failed or finished with an unknown result.
        requestError,
        deactivating,
    };
};

/// What moves the state.
enum class LoadingTrigger : std::uint8_t { activate, deactivate, needsApproval, completed, afterReboot, failed };

namespace transitions {

using enum DriverLoadingStateMachine::State;

// Activating and deactivating cancel each other out, and deactivating cancels an activation that waits for a restart.
// Only a new action leaves a request error. A completion during a deactivation completes the deactivation.
// clang-format off
inline constexpr std::array<std::array<DriverLoadingStateMachine::State, 6>, 8> table{{
//    activate    deactivate    needsApproval  completed     afterReboot          failed            from
    {{activating, deactivating, blank,         activated,    activatedUponReboot, requestError}}, // blank
    {{activating, deactivating, blank,         blank,        blank,               blank       }}, // unloaded
    {{activating, blank,        needsApproval, activated,    activatedUponReboot, requestError}}, // activating
    {{activating, deactivating, needsApproval, activated,    activatedUponReboot, requestError}}, // needsApproval
    {{activating, deactivating, blank,         activated,    activatedUponReboot, requestError}}, // activated
    {{activating, blank,        blank,         activated,    activatedUponReboot, requestError}}, // activatedUponReboot
    {{activating, deactivating, requestError,  requestError, requestError,        requestError}}, // requestError
    {{blank,      deactivating, needsApproval, blank,        blank,               requestError}}, // deactivating
}};
// clang-format on

} // namespace transitions

/// The state that follows `current`.
constexpr DriverLoadingStateMachine::State next(const DriverLoadingStateMachine::State current,
                                                const LoadingTrigger trigger) {
    return transitions::table.at(static_cast<std::size_t>(current)).at(static_cast<std::size_t>(trigger));
}

} // namespace model
