#include "simulator/scenario/CoreMac.h"

#include <algorithm>
#include <utility>

namespace simulator::scenario {

namespace {

bool liesIn(const std::string& path, const std::string& folder) {
    return path.substr(0, path.rfind('/')) == folder;
}

/// Does it to the machine.
struct Doing {
    Machine& machine;
    const ProfileReader& readProfile;

    Verdict operator()(const ByPerson& deed) const {
        switch (deed.what) {
        case ByPerson::What::allow:
            return machine.allow(deed.identifier);
        case ByPerson::What::deny:
            return machine.deny(deed.identifier);
        case ByPerson::What::authorize:
            return machine.authorize(deed.identifier);
        case ByPerson::What::refuse:
            return machine.refuse(deed.identifier);
        case ByPerson::What::disable:
            return machine.disable(deed.identifier);
        case ByPerson::What::enable:
            return machine.enable(deed.identifier);
        }
        return done;
    }
    Verdict operator()(const Restart&) const {
        machine.restart();
        return done;
    }
    Verdict operator()(const Reset&) const {
        machine.reset();
        return done;
    }
    Verdict operator()(const Install& deed) const {
        return machine.install(deed.identifier, deed.version, deed.condition);
    }
    Verdict operator()(const Uninstall& deed) const { return machine.uninstall(deed.team, deed.identifier); }
    Verdict operator()(const SetDeveloperMode& deed) const {
        machine.setDeveloperMode(deed.on);
        return done;
    }
    Verdict operator()(const SetProfile& deed) const {
        auto profile = readProfile(deed.contents);
        if (const auto* const refusal = std::get_if<Refusal>(&profile)) return *refusal;
        machine.setProfile(std::get<Profile>(std::move(profile)));
        return done;
    }
    Verdict operator()(const Advance& deed) const { return machine.advance(deed.milliseconds); }
    Verdict operator()(const SetSwitch& deed) const { return machine.setSwitch(deed.name, deed.value); }
    Verdict operator()(const OrderFault& deed) const { return machine.orderFault(deed.fault); }
};

} // namespace

std::optional<BundleOnDisk> CoreMac::Bundles::read(const std::string& path) const {
    for (const auto& [name, bundle] : byName) {
        if (bundle.path == path) return bundle;
    }
    return std::nullopt;
}

std::vector<std::string> CoreMac::Bundles::bundlesIn(const std::string& folder) const {
    std::vector<std::string> paths;
    for (const auto& [name, bundle] : byName) {
        if (liesIn(bundle.path, folder)) paths.push_back(bundle.path);
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

CoreMac::CoreMac(ProfileReader readProfile)
    : readProfile_{std::move(readProfile)}, machine_{std::make_unique<Machine>(State{}, disk_)} {
}

// Applications -------------------------------------------------------------------------------------------------------

void CoreMac::put(const std::string& application, const BundleOnDisk& bundle) {
    quit(application);
    disk_.byName[application] = bundle;
}

CoreMac::Running& CoreMac::running(const std::string& application) {
    Running& running = running_[application];
    if (running.client.empty()) running.client = application + " " + std::to_string(++lastNumber_);
    return running;
}

void CoreMac::ask(const Ask& ask) {
    Running& application = running(ask.application);
    const std::string token = std::to_string(++lastNumber_);
    application.asked[token] = ask;
    mustDo(
        machine_->submit({application.client, token, disk_.byName.at(ask.application).path, ask.kind, ask.identifier}));
}

void CoreMac::answer(const AnswerQuestion& answer) {
    const Running& application = running(answer.application);
    const auto isAsked = [&](const auto& entry) {
        const Request& request = entry.second;
        const auto asked = application.asked.find(request.token);
        return request.client == application.client && request.stage == Stage::replacement &&
               asked != application.asked.end() && asked->second.request == answer.request;
    };
    const auto& requests = machine_->requests();
    const auto found = std::find_if(requests.begin(), requests.end(), isAsked);
    if (found == requests.end()) throw NotDone{"no question about " + answer.request + " is open"};
    mustDo(machine_->answerReplacement(application.client, std::string{found->second.token}, answer.replace));
}

void CoreMac::quit(const std::string& application) {
    const auto found = running_.find(application);
    if (found == running_.end()) return;
    machine_->clientLeft(found->second.client);
    running_.erase(found);
    rest();
}

std::optional<Heard> CoreMac::hear(const std::string& application) {
    auto& heard = heard_[application];
    if (heard.empty()) return std::nullopt;
    Heard oldest = std::move(heard.front());
    heard.pop_front();
    return oldest;
}

// The person and the machine -----------------------------------------------------------------------------------------

void CoreMac::perform(const Deed& deed) {
    mustDo(std::visit(Doing{*machine_, readProfile_}, deed));
}

void CoreMac::mustDo(const Verdict& verdict) {
    if (verdict) throw NotDone{verdict->message};
    rest();
}

// What comes of it ---------------------------------------------------------------------------------------------------

void CoreMac::rest() {
    while (takeOutbox() || machine_->step()) {
    }
}

bool CoreMac::takeOutbox() {
    const Outbox outbox = machine_->takeOutbox();
    if (outbox.crashed) {
        State kept = machine_->state();
        machine_ = std::make_unique<Machine>(std::move(kept), disk_);
    } else {
        take(outbox);
    }
    return !outbox.events.empty();
}

void CoreMac::take(const Outbox& outbox) {
    for (const Answer& answer : outbox.answers)
        take(answer);
    if (!outbox.restarting) return;
    for (const auto& [name, application] : std::exchange(running_, {}))
        machine_->clientLeft(application.client);
}

void CoreMac::take(const Answer& answer) {
    for (const auto& [name, application] : running_) {
        if (application.client != answer.client) continue;
        const Ask& ask = application.asked.at(answer.token);
        heard_[name].push_back({ask.request, answer.body});
        if (std::holds_alternative<ReplacementAsked>(answer.body)) reply(answer.client, answer.token, ask);
    }
}

void CoreMac::reply(const std::string& client, const std::string& token, const Ask& ask) {
    if (ask.reply == Ask::Reply::later) return;
    const Verdict verdict = machine_->answerReplacement(client, token, ask.reply == Ask::Reply::replace);
    if (verdict) throw NotDone{verdict->message};
}

// What is there ------------------------------------------------------------------------------------------------------

std::vector<CopyThere> CoreMac::copies(const std::string& identifier) {
    std::vector<CopyThere> found;
    for (const auto& [number, copy] : machine_->state().copies) {
        if (copy.extension.identifier == identifier) found.push_back({copy.version, copy.state});
    }
    return found;
}

std::vector<RequestThere> CoreMac::requests() {
    std::vector<RequestThere> found;
    for (const auto& [number, request] : machine_->requests())
        found.push_back({request.identifier, std::string{nameOf(request.stage)}});
    return found;
}

} // namespace simulator::scenario
