#include "simulator/core/Steps.h"

#include <utility>

namespace simulator {

Steps::Steps(State& state, const Disk& disk, Outbox& outbox, Copies& copies, Requests& requests)
    : state_{state}, disk_{disk}, outbox_{outbox}, copies_{copies}, requests_{requests} {
}

bool Steps::take() {
    Request* const request = requests_.nextDue();
    if (!request) return false;
    switch (request->stage) {
    case Stage::delayed:
        requests_.take(*request, RequestEvent::delayPassed);
        break;
    case Stage::checking:
        check(*request);
        break;
    case Stage::validating:
        validate(*request);
        break;
    case Stage::staging:
        stage(*request);
        break;
    case Stage::removing:
        requests_.take(*request, RequestEvent::removed, Finished{request->result});
        break;
    default:
        break;
    }
    requests_.sweep();
    return true;
}

void Steps::check(Request& request) {
    const bool crashes = request.fault && request.fault->kind == Fault::Kind::crash;
    const std::size_t answersBefore = outbox_.answers.size();
    checkAsOrdered(request);
    if (!crashes) return;
    outbox_.answers.resize(answersBefore);
    outbox_.crashed = true;
}

void Steps::checkAsOrdered(Request& request) {
    if (request.doomed) {
        requests_.take(request, RequestEvent::failed, *request.doomed);
    } else if (request.fault && request.fault->kind == Fault::Kind::silent) {
        requests_.take(request, RequestEvent::goesSilent);
    } else if (request.fault && request.fault->kind == Fault::Kind::hollow) {
        requests_.take(request, RequestEvent::hollow, Finished{});
    } else if (request.kind == RequestKind::activation) {
        checkActivation(request);
    } else if (request.kind == RequestKind::deactivation) {
        checkDeactivation(request);
    } else {
        checkProperties(request);
    }
}

// Activation ---------------------------------------------------------------------------------------------------------

void Steps::checkActivation(Request& request) {
    const std::optional<BundleOnDisk> bundle = bundleOf(request);
    const Subject subject = subjectOf(bundle ? &*bundle : nullptr, request.identifier, state_.settings);
    if (auto failure = firstFailedLookup(subject)) {
        requests_.take(request, RequestEvent::failed, std::move(*failure));
    } else if (request.isForeign || isOfAnotherOwner(request.identifier, *bundle)) {
        requests_.take(request, RequestEvent::failed,
                       failureWith(code::extensionNotFound, "The extension belongs to another application."));
    } else {
        beginActivation(request, subject);
    }
}

void Steps::beginActivation(Request& request, const Subject& subject) {
    const ExtensionOnDisk& found = *subject.extension;
    const Version version{found.shortVersion, found.version};
    const Copy* const active = copies_.activated(request.identifier);
    const Copy* const waiting = copies_.waiting(request.identifier);
    const bool isActive = active && active->version == version;
    const bool waits = !isActive && waiting && waiting->version == version;
    if (waits || (isActive && !state_.settings.developerMode)) {
        keep(request, waits ? *waiting : *active, subject);
    } else {
        const Extension extension{found.team, request.identifier, found.name, *found.category,
                                  subject.bundle->identifier};
        request.copy = copies_.add(extension, version, request.application, CopyState::validating);
        requests_.take(request, RequestEvent::isNew);
    }
}

/// The copy need not be staged anew, but may have been damaged or forbidden since it was.
void Steps::keep(Request& request, const Copy& copy, const Subject& subject) {
    if (auto failure = firstFailedValidation(subject)) {
        requests_.take(request, RequestEvent::failed, std::move(*failure));
    } else if (isActivated(copy.state)) {
        requests_.take(request, RequestEvent::alreadyActive, Finished{});
    } else {
        request.copy = copy.number;
        askTheUser(request, RequestEvent::alreadyWaiting);
    }
}

void Steps::validate(Request& request) {
    const std::optional<BundleOnDisk> bundle = bundleOf(request);
    const Subject subject = subjectOf(bundle ? &*bundle : nullptr, request.identifier, state_.settings);
    auto failure = firstFailedLookup(subject);
    if (!failure) failure = firstFailedValidation(subject);
    if (failure) {
        requests_.take(request, RequestEvent::failed, std::move(*failure));
    } else if (const Copy* const existing = copies_.replaceable(request.identifier)) {
        const ReplacementAsked question{recordOf(*existing), recordOf(*copies_.find(request.copy))};
        requests_.take(request, RequestEvent::needsQuestion, question);
    } else {
        copies_.happen(request.copy, CopyEvent::accepted);
        requests_.take(request, RequestEvent::needsNoQuestion);
    }
}

bool Steps::needsApproval(const Copy& copy) const {
    const Extension& extension = copy.extension;
    if (state_.settings.profile.allows(extension.team, extension.identifier)) return false;
    return !copies_.isApproved(extension) || !state_.settings.isDefault(Switch::upgrade);
}

/// A profile may have arrived since the copy was validated.
void Steps::stage(Request& request) {
    const Copy& copy = *copies_.find(request.copy);
    if (auto failure = failedPolicy(copy.extension, state_.settings)) {
        requests_.take(request, RequestEvent::failed, std::move(*failure));
        return;
    }
    if (!needsApproval(copy)) {
        const std::int64_t result = copies_.activate(request.copy, CopyEvent::approved);
        requests_.take(request, RequestEvent::activated, Finished{result});
        return;
    }
    copies_.letWait(request.copy);
    askTheUser(request, RequestEvent::needsApproval);
}

void Steps::askTheUser(Request& request, RequestEvent openly) {
    if (request.fault && request.fault->kind == Fault::Kind::noprompt) {
        requests_.take(request, RequestEvent::needsHiddenPrompt);
    } else {
        requests_.take(request, openly, NeedsApproval{});
    }
}

// Deactivation and properties ----------------------------------------------------------------------------------------

void Steps::checkDeactivation(Request& request) {
    const std::optional<BundleOnDisk> bundle = bundleOf(request);
    const Subject subject = subjectOf(bundle ? &*bundle : nullptr, request.identifier, state_.settings);
    const Copy* const installed = copies_.replaceable(request.identifier);
    if (!subject.extension || !installed || request.isForeign || isOfAnotherOwner(request.identifier, *bundle)) {
        requests_.take(request, RequestEvent::failed, failureWith(code::extensionNotFound));
        return;
    }
    if (isAuthorized() || state_.settings.profile.letsRemove(installed->extension.team, request.identifier)) {
        beginRemoval(request);
    } else {
        requests_.take(request, RequestEvent::needsAdministrator);
    }
}

bool Steps::isAuthorized() const {
    return !state_.settings.isDefault(Switch::authorization);
}

void Steps::beginRemoval(Request& request) {
    request.result = copies_.beginRemoval(request.identifier);
    requests_.take(request, RequestEvent::mayRemove);
}

void Steps::checkProperties(Request& request) {
    std::vector<CopyRecord> records = copies_.report(request.identifier);
    if (records.empty() && !state_.settings.isDefault(Switch::properties)) {
        requests_.take(request, RequestEvent::failed, failureWith(code::extensionNotFound));
    } else {
        requests_.take(request, RequestEvent::listed, FoundProperties{std::move(records)});
    }
}

bool Steps::isForeign(const Request& request) const {
    if (request.kind == RequestKind::properties) return false;
    const std::optional<BundleOnDisk> bundle = bundleOf(request);
    const Subject subject = subjectOf(bundle ? &*bundle : nullptr, request.identifier, state_.settings);
    const bool holdsIt = request.kind == RequestKind::activation ? isCarried(subject) : subject.extension != nullptr;
    return !holdsIt || isOfAnotherOwner(request.identifier, *bundle);
}

bool Steps::isOfAnotherOwner(const std::string& identifier, const BundleOnDisk& bundle) const {
    const Copy* const installed = copies_.replaceable(identifier);
    if (!installed) return false;
    return installed->extension.team != bundle.team || installed->extension.owner != bundle.identifier;
}

std::optional<BundleOnDisk> Steps::bundleOf(const Request& request) const {
    return request.application.empty() ? std::nullopt : disk_.read(request.application);
}

} // namespace simulator
