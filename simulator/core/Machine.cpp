// What the user and the administrator do, and what happens to the machine.

#include "simulator/core/Machine.h"

#include "simulator/core/Words.h"

#include <utility>

namespace simulator {

Machine::Machine(State state, const Disk& disk) : state_{std::move(state)}, disk_{disk} {
    finishWhatWasBegun();
}

Outbox Machine::takeOutbox() {
    forgetEnded();
    return std::exchange(outbox_, {});
}

void Machine::forgetEnded() {
    std::erase_if(requests_, [](const auto& entry) { return entry.second.stage == Stage::ended; });
}

void Machine::tell(const std::string& identifier, const std::string& text, const std::string& application) {
    outbox_.events.push_back({state_.clock, identifier, text, application});
}

Refusal Machine::nothingOf(const std::string& identifier, const std::string& what) const {
    const bool isWellFormed = !identifier.empty() && isPlain(identifier, limits::identifier);
    if (!isWellFormed) return invalid("the identifier is malformed");
    if (!known(identifier)) return {Refusal::Kind::unknownIdentifier, identifier + ": no such extension"};
    return {Refusal::Kind::nothingWaiting, identifier + ": " + what};
}

std::optional<Refusal> Machine::policyAgainst(const Extension& extension) const {
    if (!failedPolicy(extension, state_.settings)) return std::nullopt;
    return Refusal{Refusal::Kind::forbiddenByProfile, extension.identifier + ": the management profile forbids it"};
}

// The user and the administrator --------------------------------------------------------------------------------------

/// Enables a copy that waited, and answers the request for it.
void Machine::complete(Copy& copy) {
    Request* const request = waitingFor(copy);
    const std::int64_t result = activate(copy);
    if (request) end(*request, Finished{result});
}

/// The approval is on record from now on.
Verdict Machine::allow(const std::string& identifier) {
    Copy* const copy = first(identifier, isWaiting);
    if (!copy) return nothingOf(identifier, "no copy is waiting for approval");
    if (auto refusal = policyAgainst(copy->extension)) return refusal;
    state_.approvals.insert({copy->extension.team, identifier});
    complete(*copy);
    return done;
}

/// Removes the copy; its request fails with 11, or is never answered.
Verdict Machine::deny(const std::string& identifier) {
    const Copy* const copy = first(identifier, isWaiting);
    if (!copy) return nothingOf(identifier, "no copy is waiting for approval");
    Request* const request = waitingFor(*copy);
    drop(copy->number);
    if (request && isDefault(Switch::denial))
        end(*request, requestCanceled());
    else if (request)
        goOn(*request, Stage::silent);
    return done;
}

/// Continues the removals that no longer need an administrator.
void Machine::removeWhatIsAuthorized() {
    for (auto& [number, request] : requests_)
        if (request.stage == Stage::authorization && !needsAdministrator(state_.seen.at(request.identifier)))
            remove(request);
}

Verdict Machine::authorize(const std::string& identifier) {
    Request* const request = asked(identifier);
    if (!request) return nothingOf(identifier, "no removal is waiting for an administrator");
    remove(*request);
    return done;
}

Verdict Machine::refuse(const std::string& identifier) {
    constexpr std::string_view refused = "An administrator did not authorize the request.";
    Request* const request = asked(identifier);
    if (!request) return nothingOf(identifier, "no removal is waiting for an administrator");
    end(*request, isDefault(Switch::refusal) ? failureWith(code::authorizationRequired, refused) : requestCanceled());
    return done;
}

Verdict Machine::disable(const std::string& identifier) {
    Copy* const copy = first(identifier, isActivated);
    if (!copy || copy->state != CopyState::enabled) return nothingOf(identifier, "not enabled");
    put(*copy, CopyState::disabled);
    return done;
}

Verdict Machine::enable(const std::string& identifier) {
    Copy* const copy = first(identifier, isActivated);
    if (!copy || copy->state != CopyState::disabled) return nothingOf(identifier, "not disabled");
    if (auto refusal = policyAgainst(copy->extension)) return refusal;
    put(*copy, CopyState::enabled);
    return done;
}

// The machine --------------------------------------------------------------------------------------------------------

/// Every application ends; uninstalling copies go, what was deferred becomes active, waiting copies keep waiting.
void Machine::restart() {
    requests_.clear();
    finishWhatWasBegun();
    removeTerminated();
    outbox_.restarting = true;
    tell({}, "restart: every application ends");
}

/// All of them, or all but the youngest of each extension, which outlives one restart.
void Machine::removeTerminated() {
    std::map<std::string, std::int64_t> lingering;
    for (const auto& [number, copy] : state_.copies)
        if (!isDefault(Switch::restart) && copy.state == CopyState::terminated && !copy.lingered)
            lingering[copy.extension.identifier] = number;
    for (const auto& [number, copy] : std::map{state_.copies}) {
        const bool isGoing = copy.state == CopyState::terminatingForUpgrade || copy.state == CopyState::terminated;
        const bool lingers = lingering[copy.extension.identifier] == number;
        if (isGoing && !lingers) drop(number);
        if (!lingers) continue;
        state_.copies.at(number).lingered = true;
        outbox_.copies.insert(number);
    }
}

/// Removes all copies, approvals, requests and faults; the settings stay.
void Machine::reset() {
    for (auto& [number, request] : requests_) {
        const bool isHeard = request.stage != Stage::silent && request.stage != Stage::ended;
        end(request, isHeard ? AnswerBody{requestCanceled()} : AnswerBody{});
    }
    for (const auto& [number, copy] : state_.copies)
        outbox_.copies.insert(number);
    state_.copies.clear();
    state_.approvals.clear();
    state_.faults.clear();
    state_.seen.clear();
    state_.applications.clear();
    tell({}, "reset: every copy, approval, request, and fault is removed");
}

/// Everything is then as on a new machine, except the Applications folders.
void Machine::resetAll() {
    reset();
    Settings settings;
    settings.applicationsFolders = std::move(state_.settings.applicationsFolders);
    state_.settings = std::move(settings);
    state_.clock = 0;
    tell({}, "reset: settings and clock are at their defaults");
}

/// An installed copy replaces another as a requested one does.
Verdict Machine::install(const std::string& identifier, const Version& version, const std::string& state) {
    const std::optional<CopyState> where = installableState(state);
    if (!where) return invalid("unknown state " + inQuotes(state));
    for (const std::string& part : {version.shortVersion, version.version})
        if (part.empty() || !isPlain(part, limits::version)) return invalid("the version is empty or malformed");
    const std::optional<Extension> extension = known(identifier);
    if (!extension) return nothingOf(identifier, {});
    if (*where == CopyState::enabled)
        if (auto refusal = policyAgainst(*extension)) return refusal;
    if (state_.copies.size() >= limits::copies) return tooMany("too many copies are installed");
    if (isInstalled(*where)) {
        supersede(identifier);
        const Is replaced = isWaiting(*where) ? isWaiting : isActivated;
        for (Copy* const copy : all(identifier, replaced))
            makeWay(*copy);
    }
    add(*extension, version, {}, *where);
    if (isActivated(*where)) state_.approvals.insert({extension->team, identifier});
    return done;
}

/// Without an administrator.
Verdict Machine::uninstall(const std::string& team, const std::string& identifier) {
    const Copy* const installed = replaceable(identifier);
    if (!installed) return nothingOf(identifier, "not installed");
    if (team != "-" && team != installed->extension.team) return nothingOf(identifier, "not installed by " + team);
    supersede(identifier);
    beginRemoval(identifier);
    endRemoval(identifier);
    return done;
}

Verdict Machine::setApplicationsFolders(std::vector<std::string> folders) {
    if (folders.size() > limits::folders) return tooMany("too many Applications folders");
    for (const std::string& folder : folders)
        if (folder.empty() || folder.front() != '/' || !isPlain(folder, limits::path))
            return invalid(inQuotes(folder) + " is not an absolute path");
    for (std::string& folder : folders)
        folder = disk_.canonical(folder);
    state_.settings.applicationsFolders = std::move(folders);
    tell({}, "Applications folders: " + joined(state_.settings.applicationsFolders));
    return done;
}

void Machine::setDeveloperMode(bool on) {
    state_.settings.developerMode = on;
    tell({}, on ? "developer mode: on" : "developer mode: off");
}

/// A profile completes what it allows and lets remove. What it forbids keeps waiting and cannot be enabled.
Verdict Machine::setProfile(const std::string& contents) {
    if (contents.size() > limits::profile) return invalid("the profile is too long");
    auto profile = disk_.profileIn(contents);
    if (auto* const refusal = std::get_if<Refusal>(&profile)) return std::move(*refusal);
    state_.settings.profile = std::get<Profile>(std::move(profile));
    const Profile& now = state_.settings.profile;
    tell({}, now.source.empty() ? "management profile removed" : "management profile installed");
    for (auto& [number, copy] : state_.copies)
        if (isWaiting(copy.state) && now.allows(copy.extension.team, copy.extension.identifier)) complete(copy);
    removeWhatIsAuthorized();
    return done;
}

void Machine::setSwitch(Switch which, const std::string& value) {
    const std::string before{state_.settings.valueOf(which)};
    state_.settings.set(which, value);
    tell({}, "switch " + std::string{describe(which).name} + ": " + before + " -> " + value);
    removeWhatIsAuthorized();
}

Verdict Machine::orderFault(const Fault& fault) {
    if (!isPossible(fault)) return invalid("this fault cannot befall that kind of request");
    if (fault.milliseconds < 0) return invalid("a delay cannot be negative");
    if (fault.milliseconds > limits::time) return invalid("the delay is too long");
    if (!isPlain(fault.failure.domain, limits::domain) || fault.failure.description.size() > limits::description)
        return invalid("the error is malformed");
    if (state_.faults.size() >= limits::faults) return tooMany("too many faults are ordered");
    state_.faults.emplace(++state_.lastNumber, fault);
    tell({}, "fault ordered: next " + textOf(fault));
    return done;
}

void Machine::clearFaults() {
    tell({}, "faults cleared: " + std::to_string(state_.faults.size()));
    state_.faults.clear();
}

Verdict Machine::advance(std::int64_t milliseconds) {
    if (milliseconds < 0) return invalid("time cannot go back");
    if (milliseconds > limits::time - state_.clock) return invalid("that is too far in the future");
    const std::string before = inSeconds(state_.clock);
    state_.clock += milliseconds;
    tell({}, "clock: " + before + " s -> " + inSeconds(state_.clock) + " s");
    return done;
}

} // namespace simulator
