#include "simulator/core/Copies.h"

#include "simulator/core/Require.h"

#include <algorithm>
#include <map>

namespace simulator {

namespace {

bool isWaiting(CopyState state) {
    return state == CopyState::waitingForUser;
}

bool isBeingRemoved(CopyState state) {
    return state == CopyState::terminatingForUninstall;
}

std::string versionText(const Copy& copy) {
    return copy.version.shortVersion + "/" + copy.version.version;
}

} // namespace

CopyRecord recordOf(const Copy& copy) {
    const CopyStateRow& row = describe(copy.state);
    return {copy.extension.identifier,  copy.version.shortVersion, copy.version.version, row.isEnabled,
            row.isAwaitingUserApproval, row.isUninstalling};
}

Copies::Copies(State& state, Outbox& outbox) : state_{state}, outbox_{outbox} {
}

std::int64_t Copies::add(const Extension& extension, const Version& version, const std::string& application,
                         CopyState where) {
    const std::int64_t number = ++state_.lastNumber;
    const Copy copy{number, extension, version, application, where, false};
    state_.copies.emplace(number, copy);
    outbox_.copies.insert(number);
    state_.seen[extension.identifier] = extension;
    tell(copy, std::string{describe(where).text});
    return number;
}

void Copies::happen(std::int64_t number, CopyEvent event) {
    const auto found = state_.copies.find(number);
    require(found != state_.copies.end(), "the copy exists");
    const CopyTransition* const row = transitionOf(found->second.state, event);
    require(row != nullptr, "the event means something in this state");
    outbox_.copies.insert(number);
    outbox_.copyTransitions.push_back(row);
    const std::string before{describe(row->from).text};
    if (row->to) {
        found->second.state = *row->to;
        tell(found->second, before + " -> " + std::string{describe(*row->to).text});
    } else {
        tell(found->second, before + " -> gone");
        state_.copies.erase(found);
    }
}

const Copy* Copies::find(std::int64_t number) const {
    const auto found = state_.copies.find(number);
    return found == state_.copies.end() ? nullptr : &found->second;
}

const Copy* Copies::activated(const std::string& identifier) const {
    return first(identifier, isActivated);
}

const Copy* Copies::waiting(const std::string& identifier) const {
    return first(identifier, isWaiting);
}

const Copy* Copies::replaceable(const std::string& identifier) const {
    const Copy* const active = activated(identifier);
    return active ? active : waiting(identifier);
}

bool Copies::isInstalled(const std::string& identifier) const {
    return first(identifier, simulator::isInstalled) != nullptr;
}

std::vector<CopyRecord> Copies::report(const std::string& identifier) const {
    std::vector<CopyRecord> records;
    for (const auto& [number, copy] : state_.copies) {
        if (copy.extension.identifier == identifier && describe(copy.state).reported) {
            records.push_back(recordOf(copy));
        }
    }
    return records;
}

bool Copies::isApproved(const Extension& extension) const {
    return state_.approvals.count({extension.team, extension.identifier}) != 0;
}

void Copies::approve(const Extension& extension) {
    state_.approvals.insert({extension.team, extension.identifier});
}

std::int64_t Copies::activate(std::int64_t number, CopyEvent event) {
    const std::string identifier = state_.copies.at(number).extension.identifier;
    bool mustRestart = false;
    for (const std::int64_t other : numbers(identifier, simulator::isInstalled)) {
        if (other != number && replace(other)) mustRestart = true;
    }
    happen(number, event);
    return mustRestart ? Finished::willCompleteAfterReboot : Finished::completed;
}

void Copies::letWait(std::int64_t number) {
    const std::string identifier = state_.copies.at(number).extension.identifier;
    for (const std::int64_t other : numbers(identifier, isWaiting))
        replace(other);
    happen(number, CopyEvent::unapproved);
}

void Copies::dropUnfinished(std::int64_t number) {
    const Copy* const copy = find(number);
    if (copy && (copy->state == CopyState::validating || copy->state == CopyState::staging)) {
        happen(number, CopyEvent::dropped);
    }
}

std::int64_t Copies::beginRemoval(const std::string& identifier) {
    bool mustRestart = false;
    for (const std::int64_t number : numbers(identifier, simulator::isInstalled)) {
        const Copy& copy = state_.copies.at(number);
        mustRestart = mustRestart || isInUse(copy);
        state_.approvals.erase({copy.extension.team, identifier});
        happen(number, CopyEvent::deactivated);
    }
    return mustRestart ? Finished::willCompleteAfterReboot : Finished::completed;
}

void Copies::endRemoval(const std::string& identifier) {
    for (const std::int64_t number : numbers(identifier, isBeingRemoved))
        happen(number, CopyEvent::stopped);
}

void Copies::clear(const std::string& identifier, CopyState forState) {
    if (!simulator::isInstalled(forState)) return;
    const auto matches = isWaiting(forState) ? isWaiting : isActivated;
    for (const std::int64_t number : numbers(identifier, matches))
        replace(number);
}

void Copies::forgetAll() {
    for (const auto& [number, copy] : state_.copies)
        outbox_.copies.insert(number);
    state_.copies.clear();
    state_.approvals.clear();
}

void Copies::restart() {
    const std::vector<std::int64_t> kept = lingering();
    std::vector<std::int64_t> ending;
    for (const auto& [number, copy] : state_.copies) {
        if (transitionOf(copy.state, CopyEvent::restarted)) ending.push_back(number);
    }
    for (const std::int64_t number : ending) {
        const bool stays = std::find(kept.begin(), kept.end(), number) != kept.end();
        if (stays) {
            state_.copies.at(number).lingered = true;
            outbox_.copies.insert(number);
        } else {
            happen(number, CopyEvent::restarted);
        }
    }
}

/// The youngest terminated copy of each extension outlives one restart, on a system that is switched to that.
std::vector<std::int64_t> Copies::lingering() const {
    if (state_.settings.isDefault(Switch::restart)) return {};
    std::map<std::string, std::int64_t> youngest;
    for (const auto& [number, copy] : state_.copies) {
        if (copy.state == CopyState::terminated && !copy.lingered) youngest[copy.extension.identifier] = number;
    }
    std::vector<std::int64_t> kept;
    for (const auto& [identifier, number] : youngest)
        kept.push_back(number);
    return kept;
}

bool Copies::isInUse(const Copy& copy) const {
    return copy.extension.category == Category::driver && copy.state == CopyState::enabled &&
           !state_.settings.isDefault(Switch::driver);
}

bool Copies::replace(std::int64_t number) {
    const bool runsOn = isInUse(state_.copies.at(number));
    happen(number, CopyEvent::replaced);
    if (!runsOn && find(number)) happen(number, CopyEvent::stopped);
    return runsOn;
}

std::vector<std::int64_t> Copies::numbers(const std::string& identifier, bool (*matches)(CopyState)) const {
    std::vector<std::int64_t> found;
    for (const auto& [number, copy] : state_.copies) {
        if (copy.extension.identifier == identifier && matches(copy.state)) found.push_back(number);
    }
    return found;
}

const Copy* Copies::first(const std::string& identifier, bool (*matches)(CopyState)) const {
    for (const auto& [number, copy] : state_.copies) {
        if (copy.extension.identifier == identifier && matches(copy.state)) return &copy;
    }
    return nullptr;
}

void Copies::tell(const Copy& copy, const std::string& text) {
    outbox_.events.push_back({state_.clock, copy.extension.identifier, versionText(copy) + ": " + text});
}

} // namespace simulator
