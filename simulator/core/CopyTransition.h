#pragma once

#include "simulator/core/CopyState.h"

#include <optional>

namespace simulator {

/// What happens to a copy.
enum class CopyEvent {
    accepted,   ///< its files were found valid, and it may take the place of what is there
    dropped,    ///< its activation ended before it was staged
    approved,   ///< staged, and no one need be asked
    unapproved, ///< staged, and the user must be asked
    allowed,    ///< by the user, or by a profile that arrives
    denied,     ///< by the user
    switchedOff,
    switchedOn,
    replaced,    ///< another copy of the extension takes its place
    deactivated, ///< by its application, or by hand
    stopped,     ///< it no longer runs
    restarted,   ///< the machine restarts, and has ended what it had begun
};

/// A step from one state to another, or out of the world.
struct CopyTransition {
    CopyState from;
    CopyEvent event;
    /// Nothing: the copy is gone.
    std::optional<CopyState> to;
};

// clang-format off
inline constexpr std::optional<CopyState> gone = std::nullopt;

inline constexpr std::array copyTransitions{
    //             from                                event                   to
    CopyTransition{CopyState::validating,              CopyEvent::accepted,    CopyState::staging},
    CopyTransition{CopyState::validating,              CopyEvent::dropped,     gone},
    CopyTransition{CopyState::staging,                 CopyEvent::approved,    CopyState::enabled},
    CopyTransition{CopyState::staging,                 CopyEvent::unapproved,  CopyState::waitingForUser},
    CopyTransition{CopyState::staging,                 CopyEvent::dropped,     gone},
    CopyTransition{CopyState::waitingForUser,          CopyEvent::allowed,     CopyState::enabled},
    CopyTransition{CopyState::waitingForUser,          CopyEvent::denied,      gone},
    CopyTransition{CopyState::waitingForUser,          CopyEvent::replaced,    gone},
    CopyTransition{CopyState::waitingForUser,          CopyEvent::deactivated, CopyState::terminatingForUninstall},
    CopyTransition{CopyState::enabled,                 CopyEvent::switchedOff, CopyState::disabled},
    CopyTransition{CopyState::enabled,                 CopyEvent::replaced,    CopyState::terminatingForUpgrade},
    CopyTransition{CopyState::enabled,                 CopyEvent::deactivated, CopyState::terminatingForUninstall},
    CopyTransition{CopyState::disabled,                CopyEvent::switchedOn,  CopyState::enabled},
    CopyTransition{CopyState::disabled,                CopyEvent::replaced,    CopyState::terminatingForUpgrade},
    CopyTransition{CopyState::disabled,                CopyEvent::deactivated, CopyState::terminatingForUninstall},
    CopyTransition{CopyState::terminatingForUpgrade,   CopyEvent::stopped,     CopyState::terminated},
    CopyTransition{CopyState::terminatingForUninstall, CopyEvent::stopped,     CopyState::terminated},
    CopyTransition{CopyState::terminatingForUpgrade,   CopyEvent::restarted,   gone},
    CopyTransition{CopyState::terminated,              CopyEvent::restarted,   gone},
};
// clang-format on

/// The row for an event in a state; null where the event means nothing to it.
const CopyTransition* transitionOf(CopyState from, CopyEvent event);

} // namespace simulator
