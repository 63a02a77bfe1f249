#include "simulator/player/CoreMac.h"

#include "simulator/disk/RealDisk.h"

#include <algorithm>
#include <utility>

namespace simulator::player {

namespace {

void mustBeDone(const Verdict& verdict) {
    if (verdict) throw NotDone{verdict->message};
}

} // namespace

// The disk -----------------------------------------------------------------------------------------------------------

std::optional<BundleOnDisk> CoreMac::read(const std::string& path) const {
    for (const auto& [name, application] : applications_)
        if (application.bundle.path == path) return application.bundle;
    return std::nullopt;
}

std::vector<std::string> CoreMac::bundlesIn(const std::string& folder) const {
    std::vector<std::string> paths;
    for (const auto& [name, application] : applications_) {
        const std::string& path = application.bundle.path;
        if (path.substr(0, path.rfind('/')) == folder) paths.push_back(path);
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::variant<Profile, Refusal> CoreMac::profileIn(const std::string& contents) const {
    return readProfile(contents);
}

// What is done to it -------------------------------------------------------------------------------------------------

CoreMac::CoreMac() : machine_{std::make_unique<Machine>(State{}, static_cast<const Disk&>(*this))} {
}

std::string CoreMac::start(const std::string& application) {
    return application + " " + std::to_string(++starts_);
}

void CoreMac::end(const std::string& application) {
    machine_->clientLeft(applications_.at(application).client);
}

void CoreMac::submit(const std::string& application, const std::string& token, const Ask& ask) {
    const Application& asking = applications_.at(application);
    mustBeDone(machine_->submit({asking.client, token, asking.bundle.path, ask.kind, ask.identifier}));
}

void CoreMac::reply(const std::string& application, const std::string& token, bool replace) {
    mustBeDone(machine_->answerReplacement(applications_.at(application).client, token, replace));
}

void CoreMac::act(const Saying& saying) {
    const Outcome outcome = understood(saying, WrittenOn::scenario)(*machine_);
    if (const auto* const refusal = std::get_if<Refusal>(&outcome)) throw NotDone{refusal->message};
}

// What comes of it ---------------------------------------------------------------------------------------------------

void CoreMac::rest() {
    while (takeOutbox() || machine_->step()) {
    }
}

bool CoreMac::takeOutbox() {
    const Outbox outbox = machine_->takeOutbox();
    if (outbox.crashed) {
        machine_ = std::make_unique<Machine>(State{machine_->state()}, static_cast<const Disk&>(*this));
    } else {
        for (const Answer& answer : outbox.answers)
            take(answer);
    }
    return !outbox.events.empty();
}

void CoreMac::take(const Answer& answer) {
    for (const auto& [name, application] : applications_)
        if (application.client == answer.client) tell(name, answer.token, textOf(answer.body));
}

WordList CoreMac::copies(const std::string& identifier) {
    WordList found;
    for (const auto& [number, copy] : machine_->state().copies) {
        if (copy.extension.identifier != identifier) continue;
        found.push_back(textOf(copy.version) + " " + std::string{describe(copy.state).text});
    }
    return found;
}

WordList CoreMac::requests() {
    WordList found;
    for (const auto& [number, request] : machine_->requests())
        found.push_back(request.identifier + " " + std::string{nameOf(request.stage)});
    return found;
}

} // namespace simulator::player
