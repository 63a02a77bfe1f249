// The copies, and how each goes from one state to the next.

#include "simulator/core/Machine.h"

#include <map>
#include <utility>

namespace simulator {

/// Each change of a copy becomes an event, and the outbox names the copy, so that the caller stores it.
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

/// The copy that a newer one replaces: the activated one, or else the one that waits.
Copy* Machine::replaceable(const std::string& identifier) {
    Copy* const active = first(identifier, isActivated);
    return active ? active : first(identifier, isWaiting);
}

/// Such a driver runs until the restart.
bool Machine::isInUse(const Copy& copy) const {
    const bool isDriver = copy.extension.category == Category::driver;
    return isDriver && copy.state == CopyState::enabled && !isDefault(Switch::driver);
}

/// Drops a copy that waits, and terminates one that is activated, because a newer copy replaces it. True if it runs
/// until the restart.
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

/// Enables the copy. Returns the result for its request.
std::int64_t Machine::activate(Copy& copy) {
    bool mustRestart = false;
    for (Copy* const other : all(copy.extension.identifier, isInstalled))
        if (other != &copy && makeWay(*other)) mustRestart = true;
    put(copy, CopyState::enabled);
    return mustRestart ? Finished::willCompleteAfterReboot : Finished::completed;
}

/// Only one copy of an extension waits at a time.
void Machine::letWait(Copy& copy) {
    for (Copy* const other : all(copy.extension.identifier, isWaiting))
        drop(other->number);
    put(copy, CopyState::waitingForUser);
}

/// Terminates every copy and withdraws the approval. Returns the result for the request.
std::int64_t Machine::beginRemoval(const std::string& identifier) {
    bool mustRestart = false;
    for (Copy* const copy : all(identifier, isInstalled)) {
        mustRestart = mustRestart || isInUse(*copy);
        state_.approvals.erase({copy->extension.team, identifier});
        put(*copy, CopyState::terminatingForUninstall);
    }
    return mustRestart ? Finished::willCompleteAfterReboot : Finished::completed;
}

/// Terminated copies stay until the restart.
void Machine::endRemoval(const std::string& identifier) {
    for (Copy* const copy :
         all(identifier, [](CopyState state) { return state == CopyState::terminatingForUninstall; }))
        put(*copy, CopyState::terminated);
}

/// Approval is for an extension and remains across versions and restarts. A profile can replace it.
bool Machine::needsApproval(const Extension& extension) const {
    if (state_.settings.profile.allows(extension.team, extension.identifier)) return false;
    return state_.approvals.count({extension.team, extension.identifier}) == 0 || !isDefault(Switch::upgrade);
}

/// Before the extension is removed.
bool Machine::needsAdministrator(const Extension& extension) const {
    return isDefault(Switch::authorization) &&
           !state_.settings.profile.letsRemove(extension.team, extension.identifier);
}

/// Moves a copy that a request was working on to a state that needs no request.
void Machine::finish(Copy& copy) {
    if (copy.state == CopyState::terminatingForUninstall) return put(copy, CopyState::terminated);
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

std::map<std::string, Extension> Machine::extensions() const {
    std::set<std::string> paths = state_.applications;
    for (const std::string& folder : state_.settings.applicationsFolders)
        for (const std::string& path : disk_.bundlesIn(folder))
            paths.insert(path);
    std::map<std::string, Extension> all = state_.seen;
    for (const std::string& path : paths) {
        const auto bundle = disk_.read(path).value_or(BundleOnDisk{});
        for (const ExtensionOnDisk& found : bundle.extensions)
            all.try_emplace(found.identifier, extensionOf(bundle, found));
    }
    all.erase(std::string{});
    return all;
}

std::optional<Extension> Machine::known(const std::string& identifier) const {
    const auto all = extensions();
    const auto found = all.find(identifier);
    return found == all.end() ? std::nullopt : std::optional{found->second};
}

} // namespace simulator
