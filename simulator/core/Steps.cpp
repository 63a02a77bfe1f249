// The steps that a request takes without anyone's answer.

#include "simulator/core/Machine.h"

#include <tuple>
#include <utility>

namespace simulator {

namespace {

CopyRecord recordOf(const Copy& copy) {
    const CopyStateRow& row = describe(copy.state);
    return {copy.extension.identifier,  copy.version.shortVersion, copy.version.version, row.isEnabled,
            row.isAwaitingUserApproval, row.isUninstalling};
}

} // namespace

bool Machine::isDue(const Request& request) const {
    return worksByItself(request.stage) && !request.awaitsSeal && request.due <= state_.clock;
}

/// The request that is due first goes first; of several, the one that has waited longest.
bool Machine::step() {
    Request* next = nullptr;
    for (auto& [number, request] : requests_) {
        if (!isDue(request)) continue;
        if (!next || std::tie(request.due, request.turn) < std::tie(next->due, next->turn)) next = &request;
    }
    if (!next) return false;
    if (next->stage == Stage::delayed)
        goOn(*next, Stage::checking);
    else if (next->stage == Stage::checking)
        check(*next);
    else if (next->stage == Stage::validating)
        validate(*next);
    else if (next->stage == Stage::staging)
        stage(*next);
    else
        end(*next, Finished{next->result});
    return true;
}

Subject Machine::subjectOf(const Request& request) const {
    auto bundle = request.application.empty() ? std::nullopt : disk_.read(request.application);
    return simulator::subjectOf(std::move(bundle), request.identifier, state_.settings);
}

/// An installed extension belongs to the application that installed it.
bool Machine::isOfAnotherOwner(const std::string& identifier, const BundleOnDisk& bundle) {
    const Copy* const installed = replaceable(identifier);
    return installed && (installed->extension.team != bundle.team || installed->extension.owner != bundle.identifier);
}

/// If it does not, it asks the caller to check the seal, and the step is repeated after sealChecked().
bool Machine::knowsSeal(Request& request, Subject& subject) {
    if (!request.sealMatches) request.sealMatches = subject.extension->sealMatches;
    subject.sealMatches = request.sealMatches.value_or(false);
    if (request.sealMatches) return true;
    request.awaitsSeal = true;
    outbox_.seals.push_back({request.number, pathOf(*subject.bundle, *subject.extension)});
    return false;
}

/// An application may activate and deactivate only extensions that it contains and that are not another's.
bool Machine::isForeign(const Request& request) {
    if (request.kind == RequestKind::properties) return false;
    const Subject subject = subjectOf(request);
    const bool holdsIt = request.kind == RequestKind::activation ? isCarried(subject) : subject.extension.has_value();
    return !holdsIt || isOfAnotherOwner(request.identifier, *subject.bundle);
}

/// Ordered faults take effect here. If the service crashes, no answer is sent.
void Machine::check(Request& request) {
    const std::size_t answersBefore = outbox_.answers.size();
    if (request.doomed)
        end(request, *request.doomed);
    else if (request.isBefallenBy(Fault::Kind::silent))
        goOn(request, Stage::silent);
    else if (request.isBefallenBy(Fault::Kind::hollow))
        end(request, Finished{});
    else if (request.kind == RequestKind::activation)
        checkActivation(request);
    else if (request.kind == RequestKind::deactivation)
        checkDeactivation(request);
    else
        checkProperties(request);
    if (!request.isBefallenBy(Fault::Kind::crash)) return;
    outbox_.answers.resize(answersBefore);
    outbox_.crashed = true;
}

/// If the same version is already active or waiting, no copy is added: the request finishes with 0 or waits, too. In
/// developer mode, an active copy is replaced anyway.
void Machine::checkActivation(Request& request) {
    Subject subject = subjectOf(request);
    if (auto failure = firstFailedLookup(subject)) return end(request, *failure);
    if (request.isForeign || isOfAnotherOwner(request.identifier, *subject.bundle))
        return end(request, failureWith(code::extensionNotFound, "The extension belongs to another application."));
    const ExtensionOnDisk& found = *subject.extension;
    const Copy* const active = first(request.identifier, isActivated);
    const Copy* const waiting = first(request.identifier, isWaiting);
    const bool isActive = active && active->version == found.version;
    const bool waits = !isActive && waiting && waiting->version == found.version;
    if (waits || (isActive && !state_.settings.developerMode)) {
        if (!knowsSeal(request, subject)) return;
        if (auto failure = firstFailedValidation(subject)) return end(request, *failure);
        return waits ? askUser(request, waiting->number) : end(request, Finished{});
    }
    const Extension extension = extensionOf(*subject.bundle, found);
    request.copy = add(extension, found.version, request.application, CopyState::validating).number;
    goOn(request, Stage::validating);
}

/// Stages a sound copy. If another one is installed, asks first whether to replace it.
void Machine::validate(Request& request) {
    Subject subject = subjectOf(request);
    if (auto failure = firstFailedLookup(subject)) return end(request, *failure);
    if (!knowsSeal(request, subject)) return;
    if (auto failure = firstFailedValidation(subject)) return end(request, *failure);
    Copy& copy = state_.copies.at(request.copy);
    if (const Copy* const existing = replaceable(request.identifier)) {
        say(request, ReplacementAsked{recordOf(*existing), recordOf(copy)});
        return wait(request, Stage::replacement);
    }
    put(copy, CopyState::staging);
    goOn(request, Stage::staging);
}

/// Activates a staged copy, or lets it wait for the user. A profile may have arrived since the validation.
void Machine::stage(Request& request) {
    Copy& copy = state_.copies.at(request.copy);
    if (auto failure = failedPolicy(copy.extension, state_.settings)) return end(request, *failure);
    if (!needsApproval(copy.extension)) return end(request, Finished{activate(copy)});
    letWait(copy);
    askUser(request, copy.number);
}

/// The fault "noprompt" keeps this from the application.
void Machine::askUser(Request& request, std::int64_t copy) {
    request.copy = copy;
    if (!request.isBefallenBy(Fault::Kind::noprompt)) say(request, NeedsApproval{});
    wait(request, Stage::user);
}

/// Fails with 4 if no copy is installed, or if it belongs to another application.
void Machine::checkDeactivation(Request& request) {
    const Subject subject = subjectOf(request);
    const Copy* const installed = replaceable(request.identifier);
    if (!subject.extension || !installed || request.isForeign || isOfAnotherOwner(request.identifier, *subject.bundle))
        return end(request, extensionNotFound());
    if (!needsAdministrator(installed->extension)) return remove(request);
    wait(request, Stage::authorization);
}

void Machine::remove(Request& request) {
    request.result = beginRemoval(request.identifier);
    goOn(request, Stage::removing);
}

/// One record for each copy, oldest first.
void Machine::checkProperties(Request& request) {
    FoundProperties found;
    for (const Copy* const copy : all(request.identifier, isReported))
        found.copies.push_back(recordOf(*copy));
    if (found.copies.empty() && !isDefault(Switch::properties)) return end(request, extensionNotFound());
    end(request, std::move(found));
}

} // namespace simulator
