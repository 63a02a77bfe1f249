// The tables: what stands in them, found by its name, and its name found by what it is.

#include "simulator/core/State.h"

#include <algorithm>
#include <cstddef>

namespace simulator {

namespace {

/// What a row stands for, given how it is called.
template <typename Rows, typename Row, typename Kind>
std::optional<Kind> found(const Rows& rows, std::string_view Row::*name, Kind Row::*kind, std::string_view text) {
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const Row& each) { return each.*name == text; });
    return row == rows.end() ? std::nullopt : std::optional{(*row).*kind};
}

constexpr std::array<std::string_view, 10> stageNames{"delayed", "checking", "validating",    "replacement",
                                                      "staging", "user",     "authorization", "removing",
                                                      "silent",  "ended"};

const FaultRow& rowOf(Fault::Kind kind) {
    return faultKinds[static_cast<std::size_t>(kind)];
}

bool contains(const Profile::IdentifiersOfTeam& lists, const std::string& team, const std::string& identifier) {
    const auto list = lists.find(team);
    return list != lists.end() && list->second.count(identifier) != 0;
}

} // namespace

std::string_view nameOf(Category category) {
    return categories[static_cast<std::size_t>(category)].name;
}

std::optional<Category> categoryNamed(std::string_view name) {
    return found(categories, &CategoryRow::name, &CategoryRow::category, name);
}

const CopyStateRow& describe(CopyState state) {
    return copyStates[static_cast<std::size_t>(state)];
}

std::optional<CopyState> copyStateWithText(std::string_view text) {
    return found(copyStates, &CopyStateRow::text, &CopyStateRow::state, text);
}

std::optional<CopyState> installableState(std::string_view word) {
    for (const CopyStateRow& row : copyStates)
        if (row.canBeInstalled && (row.condition == word || row.text == word)) return row.state;
    return std::nullopt;
}

std::vector<std::string> wordsForStates(bool CopyStateRow::*trait) {
    std::vector<std::string> words;
    for (const auto text : {&CopyStateRow::condition, &CopyStateRow::text})
        for (const CopyStateRow& row : copyStates) {
            const bool isNew = std::find(words.begin(), words.end(), row.*text) == words.end();
            if (isNew && (!trait || row.*trait)) words.emplace_back(row.*text);
        }
    return words;
}

std::string_view conditionFor(std::string_view word) {
    const auto state = copyStateWithText(word);
    return state ? describe(*state).condition : word;
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

bool isReported(CopyState state) {
    return describe(state).reported;
}

std::string textOf(const Version& version) {
    return version.shortVersion + "/" + version.version;
}

// Requests -----------------------------------------------------------------------------------------------------------

std::string_view nameOf(RequestKind kind) {
    return requestKinds[static_cast<std::size_t>(kind)];
}

std::optional<RequestKind> requestKindNamed(std::string_view name) {
    const auto* const found = std::find(requestKinds.begin(), requestKinds.end(), name);
    if (found == requestKinds.end()) return std::nullopt;
    return static_cast<RequestKind>(found - requestKinds.begin());
}

std::string_view nameOf(Fault::Kind kind) {
    return rowOf(kind).name;
}

std::optional<Fault::Kind> faultKindNamed(std::string_view name) {
    return found(faultKinds, &FaultRow::name, &FaultRow::kind, name);
}

bool befalls(const Fault& fault, RequestKind request) {
    const bool isMeant = !fault.request || *fault.request == request;
    return isMeant && rowOf(fault.kind).befalls[static_cast<std::size_t>(request)];
}

bool isPossible(const Fault& fault) {
    return !fault.request || befalls(fault, *fault.request);
}

bool worksByItself(Stage stage) {
    return stage == Stage::delayed || stage == Stage::checking || stage == Stage::validating ||
           stage == Stage::staging || stage == Stage::removing;
}

std::string_view nameOf(Stage stage) {
    return stageNames[static_cast<std::size_t>(stage)];
}

// Settings -----------------------------------------------------------------------------------------------------------

bool Profile::allows(const std::string& team, const std::string& identifier) const {
    return allowedTeams.count(team) != 0 || contains(allowedExtensions, team, identifier);
}

bool Profile::letsRemove(const std::string& team, const std::string& identifier) const {
    return contains(removableExtensions, team, identifier);
}

bool Profile::forbids(const std::string& team, const std::string& identifier) const {
    return !allowsUserOverrides && !allows(team, identifier);
}

const SwitchRow& describe(Switch which) {
    return switches[static_cast<std::size_t>(which)];
}

std::optional<Switch> switchNamed(std::string_view name) {
    return found(switches, &SwitchRow::name, &SwitchRow::which, name);
}

std::string_view Settings::valueOf(Switch which) const {
    return isDefault(which) ? describe(which).byDefault : std::string_view{switches.at(which)};
}

void Settings::set(Switch which, std::string_view value) {
    switches.erase(which);
    if (value != describe(which).byDefault) switches.emplace(which, value);
}

} // namespace simulator
