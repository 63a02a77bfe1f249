#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What the machine holds: copies of extensions, each of a category and in a state.

namespace simulator {

/// What kind of extension it is, in the order of the table.
enum class Category { camera, driver, endpointSecurity, network };

struct CategoryRow {
    Category category;
    std::string_view name;
};

/// In alphabetical order of the names, which is the order of the printed list.
inline constexpr std::array categories{
    CategoryRow{Category::camera, "com.apple.system_extension.cmio"},
    CategoryRow{Category::driver, "com.apple.system_extension.driver_extension"},
    CategoryRow{Category::endpointSecurity, "com.apple.system_extension.endpoint_security"},
    CategoryRow{Category::network, "com.apple.system_extension.network_extension"},
};

std::string_view nameOf(Category category);
std::optional<Category> categoryNamed(std::string_view name);

/// The state of a copy of an extension.
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
    /// The one word for it; several states may share one.
    std::string_view condition;
    /// Whether a copy can be put in this state by hand; of the states with one condition, at most one.
    bool canBeInstalled;
    /// Whether a properties request reports a copy in this state, and with which three flags.
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
    //           state                               text                                        condition       install reported enabled awaiting uninst  stars
    CopyStateRow{CopyState::validating,              "validating",                               "preparing",    false,  false,   false,  false,   false,  false, false},
    CopyStateRow{CopyState::staging,                 "staging",                                  "preparing",    false,  false,   false,  false,   false,  false, false},
    CopyStateRow{CopyState::waitingForUser,          "activated waiting for user",               "waiting",      true,   true,    false,  true,    false,  false, true},
    CopyStateRow{CopyState::enabled,                 "activated enabled",                        "enabled",      true,   true,    true,   false,   false,  true,  true},
    CopyStateRow{CopyState::disabled,                "activated disabled",                       "disabled",     true,   true,    false,  false,   false,  false, false},
    CopyStateRow{CopyState::terminatingForUpgrade,   "terminating for upgrade via delegate",     "uninstalling", false,  true,    false,  false,   true,   true,  true},
    CopyStateRow{CopyState::terminatingForUninstall, "terminating for uninstall",                "uninstalling", false,  true,    false,  false,   true,   true,  true},
    CopyStateRow{CopyState::terminated,              "terminated waiting to uninstall on reboot","uninstalling", true,   true,    false,  false,   true,   false, false},
};
// clang-format on

const CopyStateRow& describe(CopyState state);
std::optional<CopyState> copyStateWithText(std::string_view text);
/// The state in which a copy is put for this condition or text; nothing if there is none.
std::optional<CopyState> installableState(std::string_view word);
/// Every word for the states that have this trait, or for all: first the conditions, then the texts.
std::vector<std::string> wordsForStates(bool CopyStateRow::*trait = nullptr);
/// The condition of the state with this text; any other word is a condition already.
std::string_view conditionFor(std::string_view word);

/// Waits for the user's approval.
bool isWaiting(CopyState state);
/// Approved, even if it was switched off since.
bool isActivated(CopyState state);
/// Waiting or activated, and not being removed.
bool isInstalled(CopyState state);
/// Reported by a properties request.
bool isReported(CopyState state);

struct Version {
    std::string shortVersion;
    std::string version;

    friend bool operator==(const Version&, const Version&) = default;
};

/// What all copies of an extension have in common.
struct Extension {
    std::string team;
    std::string identifier;
    std::string name;
    Category category = Category::driver;
    /// The bundle identifier of the application that it belongs to.
    std::string owner;

    friend bool operator==(const Extension&, const Extension&) = default;
};

/// One copy of an extension on the simulated machine.
struct Copy {
    /// The younger the copy, the higher; never used twice.
    std::int64_t number = 0;
    Extension extension;
    Version version;
    /// The bundle that it came from; empty if it was installed without a request.
    std::string application;
    CopyState state = CopyState::validating;
    /// It has survived a restart that should have removed it.
    bool lingered = false;

    friend bool operator==(const Copy&, const Copy&) = default;
};

/// "2.1/2105"
std::string textOf(const Version& version);

} // namespace simulator
