// What the machine holds, and how a copy goes from one state to the next.

#include "simulator/core/Machine.h"

#include <map>
#include <utility>

namespace simulator {

/// Whatever happens to a copy is told, and its number is kept for whoever stores the state.
Copy& Machine::add(const Extension& extension, const Version& version, const std::string& application,
                   CopyState where) {
    const std::int64_t number = ++state_.lastNumber;
    Copy& copy = state_.copies[number] = {number, extension, version, application, where, false};
    outbox_.copies.insert(number);
    state_.seen[extension.identifier] = extension;
    tell(extension.identifier, textOf(copy.version) + ": absent -> " + std::string{describe(where).text}, application);
    return copy;
}

void Machine::put(Copy& copy, CopyState to) {
    tell(copy.extension.identifier,
         textOf(copy.version) + ": " + std::string{describe(copy.state).text} + " -> " + std::string{describe(to).text},
         copy.application);
    copy.state = to;
    outbox_.copies.insert(copy.number);
}

void Machine::drop(std::int64_t number) {
    const Copy& copy = state_.copies.at(number);
    tell(copy.extension.identifier, textOf(copy.version) + ": " + std::string{describe(copy.state).text} + " -> absent",
         copy.application);
    outbox_.copies.insert(number);
    state_.copies.erase(number);
}

std::vector<Copy*> Machine::all(const std::string& identifier, Is matches) {
    std::vector<Copy*> found;
    for (auto& [number, copy] : state_.copies)
        if (copy.extension.identifier == identifier && matches(copy.state)) found.push_back(&copy);
    return found;
}

Copy* Machine::first(const std::string& identifier, Is matches) {
    const auto found = all(identifier, matches);
    return found.empty() ? nullptr : found.front();
}

/// The copy that a newer one takes the place of: the activated one, or else the one that waits.
Copy* Machine::replaceable(const std::string& identifier) {
    Copy* const active = first(identifier, isActivated);
    return active ? active : first(identifier, isWaiting);
}

/// A driver that is in use runs on until the restart.
bool Machine::isInUse(const Copy& copy) const {
    return copy.extension.category == Category::driver && copy.state == CopyState::enabled &&
           !isDefault(Switch::driver);
}

/// A newer copy takes its place: one that waits goes, one that is enabled ends, a driver in use only with the restart.
/// Answers whether it runs on until then.
bool Machine::makeWay(Copy& copy) {
    const bool runsOn = isInUse(copy);
    if (isWaiting(copy.state)) {
        drop(copy.number);
        return false;
    }
    put(copy, CopyState::terminatingForUpgrade);
    if (!runsOn) put(copy, CopyState::terminated);
    return runsOn;
}

/// The copy is enabled; finished 1 where a restart has to complete it.
std::int64_t Machine::activate(Copy& copy) {
    bool mustRestart = false;
    for (Copy* const other : all(copy.extension.identifier, isInstalled))
        if (other != &copy && makeWay(*other)) mustRestart = true;
    put(copy, CopyState::enabled);
    return mustRestart ? Finished::willCompleteAfterReboot : Finished::completed;
}

/// The copy waits for the user, and of one identifier no other does.
void Machine::letWait(Copy& copy) {
    for (Copy* const other : all(copy.extension.identifier, isWaiting))
        drop(other->number);
    put(copy, CopyState::waitingForUser);
}

/// Every copy terminates, and the approval is forgotten: the next activation asks again.
std::int64_t Machine::beginRemoval(const std::string& identifier) {
    bool mustRestart = false;
    for (Copy* const copy : all(identifier, isInstalled)) {
        mustRestart = mustRestart || isInUse(*copy);
        state_.approvals.erase({copy->extension.team, identifier});
        put(*copy, CopyState::terminatingForUninstall);
    }
    return mustRestart ? Finished::willCompleteAfterReboot : Finished::completed;
}

/// A copy that has terminated waits for the restart to be gone.
void Machine::endRemoval(const std::string& identifier) {
    for (Copy* const copy : all(identifier, isBeingRemoved))
        put(*copy, CopyState::terminated);
}

/// Approval is per extension and stays on record across versions and restarts; a profile may stand for it.
bool Machine::needsApproval(const Extension& extension) const {
    if (state_.settings.profile.allows(extension.team, extension.identifier)) return false;
    return state_.approvals.count({extension.team, extension.identifier}) == 0 || !isDefault(Switch::upgrade);
}

/// Brings a copy that is still under way to a state in which it can stay without a request.
void Machine::finish(Copy& copy) {
    if (isBeingRemoved(copy.state)) return put(copy, CopyState::terminated);
    if (copy.state == CopyState::validating) return drop(copy.number);
    if (copy.state != CopyState::staging) return;
    if (failedPolicy(copy.extension, state_.settings)) return drop(copy.number);
    if (needsApproval(copy.extension)) return letWait(copy);
    activate(copy);
}

void Machine::finishWhatWasBegun() {
    for (const auto& [number, was] : std::map{state_.copies}) {
        const auto copy = state_.copies.find(number);
        if (copy != state_.copies.end()) finish(copy->second);
    }
}

// What it knows ------------------------------------------------------------------------------------------------------

std::vector<BundleOnDisk> Machine::bundles() const {
    std::set<std::string> paths = state_.applications;
    for (const std::string& folder : state_.settings.applicationsFolders) {
        for (const std::string& path : disk_.bundlesIn(folder))
            paths.insert(path);
    }
    std::vector<BundleOnDisk> found;
    for (const std::string& path : paths) {
        if (auto bundle = disk_.read(path)) found.push_back(std::move(*bundle));
    }
    return found;
}

std::vector<std::string> Machine::identifiers() const {
    std::set<std::string> found;
    for (const auto& [identifier, extension] : state_.seen)
        found.insert(identifier);
    for (const BundleOnDisk& bundle : bundles()) {
        for (const ExtensionOnDisk& extension : bundle.extensions) {
            if (!extension.identifier.empty()) found.insert(extension.identifier);
        }
    }
    return {found.begin(), found.end()};
}

std::optional<Extension> Machine::known(const std::string& identifier) const {
    if (identifier.empty()) return std::nullopt;
    if (const auto seen = state_.seen.find(identifier); seen != state_.seen.end()) return seen->second;
    for (const BundleOnDisk& bundle : bundles()) {
        for (const ExtensionOnDisk& extension : bundle.extensions) {
            if (extension.identifier != identifier) continue;
            return Extension{extension.team, identifier, extension.name, extension.category.value_or(Category::driver),
                             bundle.identifier};
        }
    }
    return std::nullopt;
}

} // namespace simulator
