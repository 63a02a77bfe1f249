#include "tests/simulator/sample/Witness.h"

#include "tests/simulator/sample/FakeDisk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>
#include <utility>

namespace simulator {

namespace {

bool isAnyIn(const Machine& machine, const std::string& identifier, bool (*condition)(CopyState)) {
    const auto& copies = machine.state().copies;
    return std::any_of(copies.begin(), copies.end(), [&](const auto& entry) {
        return entry.second.extension.identifier == identifier && condition(entry.second.state);
    });
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
        EXPECT_EQ(request.asked.kind, RequestKind::activation);
        EXPECT_FALSE(std::exchange(request.wasAsked, true)) << "asked twice";
        EXPECT_EQ(question.existing.identifier, request.asked.identifier);
        EXPECT_EQ(question.replacement.identifier, request.asked.identifier);
        EXPECT_FALSE(question.existing.isUninstalling);
    }

    void operator()(const NeedsApproval&) const {
        EXPECT_EQ(request.asked.kind, RequestKind::activation);
        EXPECT_FALSE(std::exchange(request.neededApproval, true)) << "needs approval twice";
        EXPECT_TRUE(isAny(isWaiting)) << "nothing waits";
    }

    void operator()(const Finished&) const {
        EXPECT_NE(request.asked.kind, RequestKind::properties);
        if (request.fault && request.fault->kind == Fault::Kind::hollow) return;
        if (request.asked.kind == RequestKind::activation) {
            EXPECT_TRUE(isAny(isActivated)) << "nothing is activated";
            EXPECT_TRUE(!request.neededApproval || was(Cause::allowed)) << "nobody allowed it";
        } else {
            EXPECT_TRUE(was(Cause::authorized)) << "nobody authorized it";
            EXPECT_FALSE(isAny(isInstalled)) << "it is still there";
        }
    }

    void operator()(const Failure& failure) const {
        EXPECT_TRUE(mayFailWith(failure.code)) << "failed with " << failure.code << " for no reason";
    }

    void operator()(const FoundProperties& found) const {
        EXPECT_EQ(request.asked.kind, RequestKind::properties);
        const auto& copies = machine.state().copies;
        const auto isDue = [&](const auto& entry) {
            return entry.second.extension.identifier == request.asked.identifier && isReported(entry.second.state);
        };
        EXPECT_EQ(found.copies.size(), std::count_if(copies.begin(), copies.end(), isDue));
    }

    bool mayFailWith(std::int64_t code) const {
        const bool isOrdered = request.fault && request.fault->kind == Fault::Kind::error;
        if (isOrdered && code == request.fault->failure.code) return true;
        switch (code) {
        case code::extensionNotFound:
            return hasNothingToActOn();
        case code::codeSignatureInvalid:
            return mayBeFoundUnfit() && carried()->sealMatches == false;
        case code::forbiddenBySystemPolicy:
            return mayBeFoundUnfit() && machine.state().settings.profile.forbids(sampleTeam, request.asked.identifier);
        case code::requestCanceled:
            return was(Cause::denied) || was(Cause::canceled) || was(Cause::refused) || was(Cause::withdrawn);
        case code::requestSuperseded:
            return request.asked.kind != RequestKind::properties && !request.isForeign && was(Cause::superseded);
        case code::authorizationRequired:
            return was(Cause::refused);
        default:
            return false;
        }
    }

    bool hasNothingToActOn() const {
        if (request.asked.kind == RequestKind::properties) return !isAny(isReported);
        return request.isForeign || (request.asked.kind == RequestKind::deactivation && !isAny(isInstalled));
    }

    /// Once it waits for the user it has passed the checks.
    bool mayBeFoundUnfit() const {
        return request.asked.kind == RequestKind::activation && carried() && !request.neededApproval;
    }

    std::optional<ExtensionOnDisk> carried() const {
        return extensionIn(disk.read(request.asked.application), request.asked.identifier);
    }

    bool isAny(bool (*condition)(CopyState)) const { return isAnyIn(machine, request.asked.identifier, condition); }
    bool was(Cause cause) const { return request.causes.count(cause) != 0; }
};

void Witness::submitted(const Submission& submission, const Machine& machine) {
    Open request;
    request.asked = submission;
    const bool changes = submission.kind != RequestKind::properties;
    request.isForeign = changes && isForeign(disk_.read(submission.application), submission.identifier, machine);
    const Settings& settings = machine.state().settings;
    const bool laterGoesOn = settings.valueOf(Switch::second) == "supersedes";
    if (changes && !request.isForeign && laterGoesOn) happened(Cause::superseded, submission.identifier);
    for (const auto& [number, taken] : machine.requests()) {
        if (taken.client == submission.client && taken.token == submission.token) {
            request.fault = taken.fault;
        } else if (taken.identifier == submission.identifier && taken.kind != RequestKind::properties && !laterGoesOn) {
            request.causes.insert(Cause::superseded);
        }
    }
    if (settings.valueOf(Switch::authorization) == "granted" ||
        settings.profile.letsRemove(sampleTeam, submission.identifier)) {
        request.causes.insert(Cause::authorized);
    }
    open_[{submission.client, submission.token}] = std::move(request);
}

void Witness::happened(Cause cause, const std::string& identifier) {
    for (auto& [name, request] : open_) {
        if (identifier.empty() || request.asked.identifier == identifier) request.causes.insert(cause);
    }
}

void Witness::happenedTo(const std::string& client, const std::string& token, Cause cause) {
    const auto found = open_.find({client, token});
    if (found != open_.end()) found->second.causes.insert(cause);
}

void Witness::clientLeft(const std::string& client) {
    std::erase_if(open_, [&](const auto& entry) { return entry.first.first == client; });
}

void Witness::hear(const Answer& answer, const Machine& machine) {
    ++answers_;
    const auto open = open_.find({answer.client, answer.token});
    ASSERT_NE(open, open_.end()) << "an answer to a request that had ended or was never asked";
    Open& request = open->second;
    if (!std::holds_alternative<Failure>(answer.body)) {
        EXPECT_FALSE(request.isForeign) << "it is another's";
        EXPECT_TRUE(!request.wasAsked || request.causes.count(Cause::replaced)) << "no word on the replacement";
    }
    std::visit(Look{request, machine, disk_}, answer.body);
    const bool isLast =
        !std::holds_alternative<NeedsApproval>(answer.body) && !std::holds_alternative<ReplacementAsked>(answer.body);
    if (isLast) open_.erase(open);
}

// Copies and requests -------------------------------------------------------------------------------------------------

namespace {

/// But for those on their way out, there is one copy of an extension in each place, and a request prepares what is
/// prepared.
void lookAtPlaces(const Machine& machine) {
    std::map<std::pair<std::string, std::string_view>, int> counted;
    for (const auto& [number, copy] : machine.state().copies) {
        EXPECT_EQ(number, copy.number);
        const std::string_view place = isActivated(copy.state) ? "activated" : describe(copy.state).condition;
        const int count = ++counted[std::pair{copy.extension.identifier, place}];
        EXPECT_TRUE(count == 1 || describe(copy.state).isUninstalling) << copy.extension.identifier << " " << place;
    }
    for (const auto& [number, request] : machine.requests())
        if (request.copy != 0) counted.erase({request.identifier, "preparing"});
    for (const auto& [what, count] : counted)
        EXPECT_NE(what.second, "preparing") << "no request prepares a copy of " << what.first;
}

void lookAtWaitingRequests(const Machine& machine) {
    for (const auto& [number, request] : machine.requests()) {
        if (request.stage != Stage::user) continue;
        const auto copy = machine.state().copies.find(request.copy);
        ASSERT_NE(copy, machine.state().copies.end());
        EXPECT_EQ(copy->second.state, CopyState::waitingForUser);
    }
}

} // namespace

void Watch::approved(const std::string& identifier) {
    approved_.insert(identifier);
    justApproved_ = identifier;
}

void Watch::look(const Machine& machine) {
    lookAtPlaces(machine);
    lookAtWaitingRequests(machine);
    std::set<std::string> lasting;
    for (const auto& [number, copy] : machine.state().copies) {
        const std::string& identifier = copy.extension.identifier;
        if (isActivated(copy.state) && approved_.count(identifier) != 0) lasting.insert(identifier);
        if (copy.state == CopyState::enabled) lookAtEnabled(copy, machine.state().settings);
    }
    before_ = machine.state().copies;
    approved_ = std::move(lasting);
    justApproved_.clear();
}

/// What was enabled before runs on, whatever is allowed by now.
void Watch::lookAtEnabled(const Copy& copy, const Settings& settings) const {
    const auto before = before_.find(copy.number);
    if (before != before_.end() && before->second.state == CopyState::enabled) return;
    const auto& [team, identifier] = std::tie(copy.extension.team, copy.extension.identifier);
    EXPECT_FALSE(settings.profile.forbids(team, identifier)) << identifier << ": the profile forbids it";
    const bool asksAgain = settings.valueOf(Switch::upgrade) == "asked";
    const bool isApproved = asksAgain ? justApproved_ == identifier : approved_.count(identifier) != 0;
    const bool isSwitchedOn = before != before_.end() && before->second.state == CopyState::disabled;
    EXPECT_TRUE(isSwitchedOn || isApproved || settings.profile.allows(team, identifier))
        << identifier << " is enabled, and nobody allowed it";
}

} // namespace simulator
