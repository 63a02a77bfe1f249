#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace simulator {

/// Where a copy of an extension stands.
enum class CopyState {
    validating,
    staging,
    waitingForUser,
    enabled,
    disabled,
    terminatingForUpgrade,
    terminatingForUninstall,
    terminated,
};

/// How a state is shown.
struct CopyStateRow {
    CopyState state;
    /// As the list prints it.
    std::string_view text;
    /// The one word by which scripts name it; several states may share one.
    std::string_view condition;
    /// Whether a properties request reports a copy that stands here, and with which three flags.
    bool reported;
    bool isEnabled;
    bool isAwaitingUserApproval;
    bool isUninstalling;
    /// The list's two columns of stars.
    bool enabledStar;
    bool activeStar;
};

// clang-format off
inline constexpr std::array copyStates{
    //           state                               text                                        condition       reported enabled awaiting uninst  stars
    CopyStateRow{CopyState::validating,              "validating",                               "preparing",    false,   false,  false,   false,  false, false},
    CopyStateRow{CopyState::staging,                 "staging",                                  "preparing",    false,   false,  false,   false,  false, false},
    CopyStateRow{CopyState::waitingForUser,          "activated waiting for user",               "waiting",      true,    false,  true,    false,  false, true},
    CopyStateRow{CopyState::enabled,                 "activated enabled",                        "enabled",      true,    true,   false,   false,  true,  true},
    CopyStateRow{CopyState::disabled,                "activated disabled",                       "disabled",     true,    false,  false,   false,  false, false},
    CopyStateRow{CopyState::terminatingForUpgrade,   "terminating for upgrade via delegate",     "uninstalling", true,    false,  false,   true,   true,  true},
    CopyStateRow{CopyState::terminatingForUninstall, "terminating for uninstall",                "uninstalling", true,    false,  false,   true,   true,  true},
    CopyStateRow{CopyState::terminated,              "terminated waiting to uninstall on reboot","uninstalling", true,    false,  false,   true,   false, false},
};
// clang-format on

const CopyStateRow& describe(CopyState state);
std::optional<CopyState> copyStateWithText(std::string_view text);
/// The state in which a copy is put when someone asks for this condition; nothing for an unknown word and for
/// "preparing", in which no copy stays.
std::optional<CopyState> stateForCondition(std::string_view condition);

/// Installed and not on its way out: waiting, enabled or disabled.
bool isInstalled(CopyState state);
/// Approved, whether or not it was switched off since.
bool isActivated(CopyState state);

} // namespace simulator
