#include "tests/simulator/sample/Witness.h"

#include "tests/simulator/sample/FakeDisk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace simulator {

namespace {

bool isAnyIn(const Machine& machine, const std::string& identifier, bool (*condition)(CopyState)) {
    const auto& copies = machine.state().copies;
    return std::any_of(copies.begin(), copies.end(), [&](const auto& entry) {
        return entry.second.extension.identifier == identifier && condition(entry.second.state);
    });
}

bool waits(CopyState state) {
    return state == CopyState::waitingForUser;
}

bool isSeen(CopyState state) {
    return state != CopyState::validating && state != CopyState::staging;
}

bool changesWhatIsThere(RequestKind kind) {
    return kind != RequestKind::properties;
}

/// The extension as the bundle holds it; nothing if it holds none.
std::optional<ExtensionOnDisk> extensionIn(const std::optional<BundleOnDisk>& bundle, const std::string& identifier) {
    if (!bundle) return std::nullopt;
    for (const ExtensionOnDisk& extension : bundle->extensions) {
        if (extension.identifier == identifier) return extension;
    }
    return std::nullopt;
}

/// Whether the application of that bundle has no business with the extension.
bool isForeign(const std::optional<BundleOnDisk>& bundle, const std::string& identifier, const Machine& machine) {
    if (!extensionIn(bundle, identifier)) return true;
    const auto& copies = machine.state().copies;
    return std::any_of(copies.begin(), copies.end(), [&](const auto& entry) {
        const Extension& extension = entry.second.extension;
        return extension.identifier == identifier && isInstalled(entry.second.state) &&
               extension.owner != bundle->identifier;
    });
}

} // namespace

struct Witness::Look {
    Open& request;
    const Machine& machine;
    const Disk& disk;

    void operator()(std::monostate) const { ADD_FAILURE() << "an answer that says nothing"; }

    void operator()(const ReplacementAsked& question) const {
        EXPECT_EQ(request.kind, RequestKind::activation);
        EXPECT_FALSE(std::exchange(request.wasAsked, true)) << "asked twice";
        EXPECT_EQ(question.existing.identifier, request.identifier);
        EXPECT_EQ(question.replacement.identifier, request.identifier);
        EXPECT_FALSE(question.existing.isUninstalling);
    }

    void operator()(const NeedsApproval&) const {
        EXPECT_EQ(request.kind, RequestKind::activation);
        EXPECT_FALSE(std::exchange(request.neededApproval, true)) << "needs approval twice";
        EXPECT_FALSE(request.fault && request.fault->kind == Fault::Kind::noprompt) << "the prompt was to be hidden";
        EXPECT_TRUE(isAnyIn(machine, request.identifier, waits)) << "nothing waits";
        lookAtConsent();
    }

    void operator()(const Finished& finished) const {
        EXPECT_NE(request.kind, RequestKind::properties);
        if (request.fault && request.fault->kind == Fault::Kind::hollow) {
            EXPECT_EQ(finished.result, 0);
        } else if (request.kind == RequestKind::activation) {
            EXPECT_TRUE(isAnyIn(machine, request.identifier, isActivated)) << "nothing is activated";
            EXPECT_TRUE(!request.neededApproval || request.causes.count(Cause::allowed)) << "nobody allowed it";
            EXPECT_FALSE(isForbidden()) << "the profile forbids it";
            lookAtConsent();
        } else {
            EXPECT_TRUE(request.causes.count(Cause::authorized)) << "nobody authorised it";
            EXPECT_FALSE(isAnyIn(machine, request.identifier, isInstalled)) << "it is still there";
        }
    }

    void operator()(const Failure& failure) const {
        EXPECT_TRUE(mayFailWith(failure.code)) << "failed with " << failure.code << " for no reason";
    }

    void operator()(const FoundProperties& found) const {
        EXPECT_EQ(request.kind, RequestKind::properties);
        EXPECT_TRUE(found.copies == recordsThatAreDue()) << "other copies than there are";
    }

    /// One of each copy that is past its staging, oldest first.
    std::vector<CopyRecord> recordsThatAreDue() const {
        std::vector<CopyRecord> records;
        for (const auto& [number, copy] : machine.state().copies) {
            if (copy.extension.identifier != request.identifier || !isSeen(copy.state)) continue;
            const bool isOnItsWayOut = !waits(copy.state) && !isActivated(copy.state);
            records.push_back({request.identifier, copy.version.shortVersion, copy.version.version,
                               copy.state == CopyState::enabled, waits(copy.state), isOnItsWayOut});
        }
        return records;
    }

    bool mayFailWith(std::int64_t code) const {
        const auto was = [&](Cause cause) { return request.causes.count(cause) != 0; };
        const bool isOrdered = request.fault && request.fault->kind == Fault::Kind::error;
        if (isOrdered && code == request.fault->failure.code) return true;
        switch (code) {
        case code::extensionNotFound:
            return hasNothingToActOn();
        case code::codeSignatureInvalid:
            return mayBeFoundUnfit() && carried()->sealMatches == false;
        case code::forbiddenBySystemPolicy:
            return mayBeFoundUnfit() && isForbidden();
        case code::requestCanceled:
            return was(Cause::denied) || was(Cause::canceled) || was(Cause::refused) || was(Cause::withdrawn);
        case code::requestSuperseded:
            return !request.isForeign && was(Cause::superseded);
        case code::authorizationRequired:
            return was(Cause::refused);
        default:
            return false;
        }
    }

    bool hasNothingToActOn() const {
        switch (request.kind) {
        case RequestKind::activation:
            return request.isForeign;
        case RequestKind::deactivation:
            return request.isForeign || !isAnyIn(machine, request.identifier, isInstalled);
        case RequestKind::properties:
            return !isAnyIn(machine, request.identifier, isSeen);
        }
        return false;
    }

    bool isForbidden() const { return machine.state().settings.profile.forbids(sampleTeam, request.identifier); }

    /// Once it waits for the user it has passed the checks.
    bool mayBeFoundUnfit() const {
        return request.kind == RequestKind::activation && carried() && !request.neededApproval;
    }

    std::optional<ExtensionOnDisk> carried() const {
        return extensionIn(disk.read(request.application), request.identifier);
    }

    /// Who was asked whether the new copy may take the place of the old one has said so.
    void lookAtConsent() const {
        EXPECT_TRUE(!request.wasAsked || request.causes.count(Cause::replaced)) << "no word on the replacement";
    }
};

void Witness::submitted(const Submission& submission, const Machine& machine) {
    Open request;
    request.kind = submission.kind;
    request.identifier = submission.identifier;
    request.application = submission.application;
    request.isForeign =
        changesWhatIsThere(request.kind) && isForeign(disk_.read(request.application), request.identifier, machine);
    for (const auto& [number, taken] : machine.requests()) {
        if (taken.client == submission.client && taken.token == submission.token) request.fault = taken.fault;
    }
    EXPECT_FALSE(request.isForeign && request.fault) << "it took a fault that was ordered for an owner";
    const Settings& settings = machine.state().settings;
    if (settings.valueOf(Switch::authorization) == "granted" ||
        settings.profile.letsRemove(sampleTeam, request.identifier)) {
        request.causes.insert(Cause::authorized);
    }
    if (changesWhatIsThere(request.kind) && !request.isForeign) contend(request, machine);
    open_[{submission.client, submission.token}] = request;
}

void Witness::contend(Open& later, const Machine& machine) {
    const bool laterGoesOn = machine.state().settings.valueOf(Switch::second) == "supersedes";
    for (auto& [name, earlier] : open_) {
        if (earlier.identifier != later.identifier || !changesWhatIsThere(earlier.kind) || earlier.isForeign) continue;
        (laterGoesOn ? earlier : later).causes.insert(Cause::superseded);
    }
    if (laterGoesOn) return;
    for (const auto& [number, taken] : machine.requests()) {
        const bool isAbandoned = taken.client.empty() && changesWhatIsThere(taken.kind) && !taken.isForeign;
        if (isAbandoned && taken.identifier == later.identifier) later.causes.insert(Cause::superseded);
    }
}

void Witness::happened(Cause cause, const std::string& identifier) {
    for (auto& [name, request] : open_) {
        if (identifier.empty() || request.identifier == identifier) request.causes.insert(cause);
    }
}

void Witness::happenedTo(const std::string& client, const std::string& token, Cause cause) {
    const auto found = open_.find({client, token});
    if (found != open_.end()) found->second.causes.insert(cause);
}

void Witness::clientLeft(const std::string& client) {
    for (auto entry = open_.begin(); entry != open_.end();) {
        entry = entry->first.first == client ? open_.erase(entry) : std::next(entry);
    }
}

void Witness::hear(const Answer& answer, const Machine& machine) {
    ++answers_;
    const auto open = open_.find({answer.client, answer.token});
    ASSERT_NE(open, open_.end()) << "an answer to a request that had ended or was never asked";
    EXPECT_TRUE(!open->second.isForeign || std::holds_alternative<Failure>(answer.body)) << "it is another's";
    std::visit(Look{open->second, machine, disk_}, answer.body);
    const bool isLast =
        !std::holds_alternative<NeedsApproval>(answer.body) && !std::holds_alternative<ReplacementAsked>(answer.body);
    if (isLast) open_.erase(open);
}

// Consent -------------------------------------------------------------------------------------------------------------

void Consent::given(const std::string& identifier) {
    approved_.insert(identifier);
    justApproved_ = identifier;
}

void Consent::look(const Machine& machine) {
    std::map<std::int64_t, CopyState> now;
    std::set<std::string> lasting;
    for (const auto& [number, copy] : machine.state().copies) {
        const std::string& identifier = copy.extension.identifier;
        now.emplace(number, copy.state);
        if (isActivated(copy.state) && approved_.count(identifier) != 0) lasting.insert(identifier);
        if (copy.state == CopyState::enabled) lookAt(copy, machine.state().settings);
    }
    before_ = std::move(now);
    approved_ = std::move(lasting);
    justApproved_.clear();
}

/// What was enabled before runs on, whatever is allowed by now.
void Consent::lookAt(const Copy& copy, const Settings& settings) const {
    const auto before = before_.find(copy.number);
    if (before != before_.end() && before->second == CopyState::enabled) return;
    const Extension& extension = copy.extension;
    EXPECT_FALSE(settings.profile.forbids(extension.team, extension.identifier))
        << extension.identifier << " is enabled, and the profile forbids it";
    const bool isSwitchedOn = before != before_.end() && before->second == CopyState::disabled;
    EXPECT_TRUE(isSwitchedOn || covers(copy, settings)) << extension.identifier << " is enabled, and nobody allowed it";
}

bool Consent::covers(const Copy& copy, const Settings& settings) const {
    const Extension& extension = copy.extension;
    if (settings.profile.allows(extension.team, extension.identifier)) return true;
    const bool asksAgain = settings.valueOf(Switch::upgrade) == "asked";
    return asksAgain ? justApproved_ == extension.identifier : approved_.count(extension.identifier) != 0;
}

} // namespace simulator
