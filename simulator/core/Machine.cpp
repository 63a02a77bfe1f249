#include "simulator/core/Machine.h"

#include "simulator/core/Limits.h"

#include <algorithm>
#include <limits>
#include <set>
#include <utility>

namespace simulator {

namespace {

Refusal invalid(std::string message) {
    return {Refusal::Kind::invalidArgument, std::move(message)};
}

Refusal tooMany(std::string message) {
    return {Refusal::Kind::limitExceeded, std::move(message)};
}

} // namespace

Machine::Machine(State state, const Disk& disk)
    : state_{std::move(state)},
      catalog_{state_, disk},
      copies_{state_, outbox_},
      requests_{state_, outbox_, copies_},
      steps_{state_, disk, outbox_, copies_, requests_} {
    finishWhatWasBegun();
}

Outbox Machine::takeOutbox() {
    return std::exchange(outbox_, {});
}

Refusal Machine::nothingOf(const std::string& identifier, const std::string& what) const {
    if (!isPlain(identifier, limits::identifier)) return invalid("the identifier is malformed");
    if (!catalog_.find(identifier)) return {Refusal::Kind::unknownIdentifier, identifier + ": no such extension"};
    return {Refusal::Kind::nothingWaiting, identifier + ": " + what};
}

/// What the profile forbids is nobody's to enable.
std::optional<Refusal> Machine::policyAgainst(const Extension& extension) const {
    if (!failedPolicy(extension, state_.settings)) return std::nullopt;
    return Refusal{Refusal::Kind::forbiddenByProfile, extension.identifier + ": the management profile forbids it"};
}

void Machine::tell(const std::string& identifier, const std::string& text) {
    outbox_.events.push_back({state_.clock, identifier, text});
}

// The applications ---------------------------------------------------------------------------------------------------

std::optional<Refusal> Machine::objectionTo(const Submission& submission) {
    if (submission.token.empty() || !isPlain(submission.token, limits::token)) return invalid("the token is malformed");
    if (!isPlain(submission.identifier, limits::identifier)) return invalid("the identifier is malformed");
    if (requests_.find(submission.client, submission.token)) return invalid("the token names an open request");
    if (requests_.countOf(submission.client) >= limits::requestsOfClient ||
        requests_.all().size() >= limits::requests) {
        return tooMany("too many requests are open");
    }
    return std::nullopt;
}

Verdict Machine::submit(const Submission& submission) {
    if (auto objection = objectionTo(submission)) return objection;
    Request request;
    request.client = submission.client;
    request.token = submission.token;
    request.application = submission.application;
    request.kind = submission.kind;
    request.identifier = submission.identifier;
    request.due = state_.clock;
    request.isForeign = steps_.isForeign(request);
    if (!request.isForeign) {
        orderFaultOf(request);
        makeWayFor(request);
    }
    if (!request.application.empty() && state_.applications.size() < limits::applications) {
        state_.applications.insert(request.application);
    }
    requests_.add(std::move(request));
    requests_.sweep();
    return done;
}

/// Gives the request the first ordered fault that befalls it.
void Machine::orderFaultOf(Request& request) {
    const auto found = std::find_if(state_.faults.begin(), state_.faults.end(),
                                    [&](const auto& entry) { return befalls(entry.second, request.kind); });
    if (found == state_.faults.end()) return;
    request.fault = found->second;
    state_.faults.erase(found);
    if (request.fault->kind == Fault::Kind::error) request.doomed = request.fault->failure;
    if (request.fault->kind == Fault::Kind::delay) {
        request.stage = Stage::delayed;
        request.due = state_.clock + request.fault->milliseconds;
    }
}

/// Only one activation or deactivation of an extension is under way at a time.
void Machine::makeWayFor(Request& request) {
    if (request.kind == RequestKind::properties || !requests_.pending(request.identifier)) return;
    if (state_.settings.isDefault(Switch::second)) {
        supersede(request.identifier);
    } else {
        request.doomed = failureOfSecond();
    }
}

void Machine::supersede(const std::string& identifier) {
    while (Request* const older = requests_.pending(identifier)) {
        requests_.take(*older, RequestEvent::superseded, failureWith(code::requestSuperseded));
    }
}

Verdict Machine::answerReplacement(const std::string& client, const std::string& token, bool replace) {
    Request* const request = requests_.find(client, token);
    if (!request || request->stage != Stage::replacement) return invalid("no such question is open");
    if (replace) {
        copies_.happen(request->copy, CopyEvent::accepted);
        requests_.take(*request, RequestEvent::replace);
    } else {
        requests_.take(*request, RequestEvent::cancel, failureWith(code::requestCanceled));
    }
    requests_.sweep();
    return done;
}

void Machine::clientLeft(const std::string& client) {
    requests_.clientLeft(client);
}

// The person at the machine ------------------------------------------------------------------------------------------

/// Enables a copy that waited, and tells who asked for it.
void Machine::complete(std::int64_t copy) {
    Request* const request = requests_.waitingFor(copy);
    const std::int64_t result = copies_.activate(copy, CopyEvent::allowed);
    if (request) requests_.take(*request, RequestEvent::activated, Finished{result});
    requests_.sweep();
}

Verdict Machine::allow(const std::string& identifier) {
    const Copy* const copy = copies_.waiting(identifier);
    if (!copy) return nothingOf(identifier, "nothing waits for approval");
    if (auto refusal = policyAgainst(copy->extension)) return refusal;
    copies_.approve(copy->extension);
    complete(copy->number);
    return done;
}

Verdict Machine::deny(const std::string& identifier) {
    const Copy* const copy = copies_.waiting(identifier);
    if (!copy) return nothingOf(identifier, "nothing waits for approval");
    Request* const request = requests_.waitingFor(copy->number);
    copies_.happen(copy->number, CopyEvent::denied);
    if (request && state_.settings.isDefault(Switch::denial)) {
        requests_.take(*request, RequestEvent::denied, failureWith(code::requestCanceled));
    } else if (request) {
        requests_.take(*request, RequestEvent::deniedUnheard);
    }
    requests_.sweep();
    return done;
}

Verdict Machine::authorize(const std::string& identifier) {
    Request* const request = requests_.inStage(Stage::authorization, identifier);
    if (!request) return nothingOf(identifier, "no administrator is asked");
    steps_.beginRemoval(*request);
    return done;
}

void Machine::authorizeAll() {
    while (Request* const asked = requests_.inStage(Stage::authorization))
        steps_.beginRemoval(*asked);
}

Verdict Machine::refuse(const std::string& identifier) {
    Request* const request = requests_.inStage(Stage::authorization, identifier);
    if (!request) return nothingOf(identifier, "no administrator is asked");
    const bool isUsual = state_.settings.isDefault(Switch::refusal);
    requests_.take(*request, RequestEvent::mayNotRemove,
                   failureWith(isUsual ? code::authorizationRequired : code::requestCanceled));
    requests_.sweep();
    return done;
}

Verdict Machine::disable(const std::string& identifier) {
    const Copy* const copy = copies_.activated(identifier);
    if (!copy || copy->state != CopyState::enabled) return nothingOf(identifier, "not enabled");
    copies_.happen(copy->number, CopyEvent::switchedOff);
    return done;
}

Verdict Machine::enable(const std::string& identifier) {
    const Copy* const copy = copies_.activated(identifier);
    if (!copy || copy->state != CopyState::disabled) return nothingOf(identifier, "not disabled");
    if (auto refusal = policyAgainst(copy->extension)) return refusal;
    copies_.happen(copy->number, CopyEvent::switchedOn);
    return done;
}

// The machine --------------------------------------------------------------------------------------------------------

/// Brings every copy to a state in which it can stay without a request.
void Machine::finishWhatWasBegun() {
    std::vector<std::int64_t> numbers;
    for (const auto& [number, copy] : state_.copies)
        numbers.push_back(number);
    for (const std::int64_t number : numbers) {
        const Copy* const copy = copies_.find(number);
        if (!copy) continue;
        switch (copy->state) {
        case CopyState::validating:
            copies_.happen(number, CopyEvent::dropped);
            break;
        case CopyState::staging:
            finishStaging(*copy);
            break;
        case CopyState::terminatingForUninstall:
            copies_.happen(number, CopyEvent::stopped);
            break;
        default:
            break;
        }
    }
}

void Machine::finishStaging(const Copy& copy) {
    if (failedPolicy(copy.extension, state_.settings)) {
        copies_.happen(copy.number, CopyEvent::dropped);
    } else if (steps_.needsApproval(copy)) {
        copies_.letWait(copy.number);
    } else {
        copies_.activate(copy.number, CopyEvent::approved);
    }
}

void Machine::restart() {
    requests_.forgetAll();
    finishWhatWasBegun();
    copies_.restart();
    outbox_.restarting = true;
    tell({}, "restart");
}

void Machine::reset() {
    requests_.withdrawAll();
    copies_.forgetAll();
    state_.faults.clear();
    state_.seen.clear();
    state_.applications.clear();
    tell({}, "reset");
}

Verdict Machine::install(const std::string& identifier, const Version& version, const std::string& condition) {
    const std::optional<CopyState> where = stateForCondition(condition);
    if (!where) return invalid("'" + condition + "' is not enabled, waiting, disabled or uninstalling");
    if (!isPlain(version.shortVersion, limits::version) || !isPlain(version.version, limits::version)) {
        return invalid("the version is malformed");
    }
    const std::optional<Extension> extension = catalog_.find(identifier);
    if (!extension) return nothingOf(identifier, {});
    if (*where == CopyState::enabled) {
        if (auto refusal = policyAgainst(*extension)) return refusal;
    }
    if (state_.copies.size() >= limits::copies) return tooMany("too many copies are installed");
    if (isInstalled(*where)) supersede(identifier);
    copies_.clear(identifier, *where);
    copies_.add(*extension, version, {}, *where);
    if (isActivated(*where)) copies_.approve(*extension);
    requests_.sweep();
    return done;
}

Verdict Machine::uninstall(const std::string& team, const std::string& identifier) {
    const Copy* const installed = copies_.replaceable(identifier);
    if (!installed) return nothingOf(identifier, "not installed");
    if (team != "-" && team != installed->extension.team) return nothingOf(identifier, "not installed by " + team);
    supersede(identifier);
    copies_.beginRemoval(identifier);
    copies_.endRemoval(identifier);
    requests_.sweep();
    return done;
}

Verdict Machine::setApplicationsFolders(std::vector<std::string> folders) {
    if (folders.size() > limits::folders) return tooMany("too many Applications folders");
    for (const std::string& folder : folders) {
        if (folder.empty() || folder.front() != '/' || !isPlain(folder, limits::path)) {
            return invalid("'" + folder + "' is not an absolute path");
        }
    }
    state_.settings.applicationsFolders = std::move(folders);
    tell({}, "Applications folders changed");
    return done;
}

void Machine::setDeveloperMode(bool on) {
    state_.settings.developerMode = on;
    tell({}, on ? "developer mode on" : "developer mode off");
}

void Machine::setProfile(Profile profile) {
    state_.settings.profile = std::move(profile);
    tell({}, "profile changed");
    std::vector<std::int64_t> allowed;
    for (const auto& [number, copy] : state_.copies) {
        const bool waits = copy.state == CopyState::waitingForUser;
        if (waits && state_.settings.profile.allows(copy.extension.team, copy.extension.identifier)) {
            allowed.push_back(number);
        }
    }
    for (const std::int64_t number : allowed)
        complete(number);
    for (const auto& [number, copy] : std::map{state_.copies}) {
        const Extension& extension = copy.extension;
        Request* const asked = requests_.inStage(Stage::authorization, extension.identifier);
        if (asked && state_.settings.profile.letsRemove(extension.team, extension.identifier))
            steps_.beginRemoval(*asked);
    }
}

Verdict Machine::setSwitch(const std::string& name, const std::string& value) {
    const std::optional<Switch> which = switchNamed(name);
    if (!which) return invalid("'" + name + "' is no switch");
    const SwitchRow& row = describe(*which);
    if (value != row.byDefault && value != row.otherwise) {
        return invalid(name + " is " + std::string{row.byDefault} + " or " + std::string{row.otherwise} + ", not '" +
                       value + "'");
    }
    state_.settings.set(*which, value);
    tell({}, "switch " + name + " " + value);
    if (*which == Switch::authorization && steps_.isAuthorized()) authorizeAll();
    return done;
}

Verdict Machine::orderFault(const Fault& fault) {
    if (!isPossible(fault)) return invalid("such a request has no such fault");
    if (fault.milliseconds < 0) return invalid("a delay cannot be negative");
    if (fault.milliseconds > limits::time) return invalid("the delay is too long");
    if (!isPlain(fault.failure.domain, limits::domain) || fault.failure.description.size() > limits::description) {
        return invalid("the error is malformed");
    }
    if (state_.faults.size() >= limits::faults) return tooMany("too many faults are ordered");
    state_.faults.emplace(++state_.lastNumber, fault);
    tell({}, "fault ordered: " + std::string{nameOf(fault.kind)});
    return done;
}

Verdict Machine::advance(std::int64_t milliseconds) {
    if (milliseconds < 0) return invalid("time cannot go back");
    if (milliseconds > limits::time - state_.clock) return invalid("that is too far in the future");
    state_.clock += milliseconds;
    tell({}, "clock " + std::to_string(state_.clock) + " ms");
    return done;
}

} // namespace simulator
