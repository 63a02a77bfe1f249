#include "simulator/player/Mac.h"

#include "simulator/disk/RealDisk.h"

#include <algorithm>

namespace simulator::player {

namespace {

void mustBeDone(const Verdict& verdict) {
    if (verdict) throw NotDone{verdict->message};
}

/// It is also the disk, which holds the bundles of the applications.
class CoreMac final : public Mac, public Disk {
public:
    WordList copies(const std::string& identifier) override {
        WordList found;
        for (const auto& [number, copy] : machine_->state().copies) {
            if (copy.extension.identifier != identifier) continue;
            found.push_back(textOf(copy.version) + " " + std::string{describe(copy.state).text});
        }
        return found;
    }
    WordList requests() override {
        WordList found;
        for (const auto& [number, request] : machine_->requests())
            found.push_back(request.identifier + " " + std::string{nameOf(request.stage)});
        return found;
    }

    std::optional<BundleOnDisk> read(const std::string& path) const override {
        for (const auto& [name, application] : applications_)
            if (application.bundle.path == path) return application.bundle;
        return std::nullopt;
    }
    std::vector<std::string> bundlesIn(const std::string& folder) const override {
        std::vector<std::string> paths;
        for (const auto& [name, application] : applications_) {
            const std::string& path = application.bundle.path;
            if (path.substr(0, path.rfind('/')) == folder) paths.push_back(path);
        }
        std::sort(paths.begin(), paths.end());
        return paths;
    }
    std::variant<Profile, Refusal> profileIn(const std::string& contents) const override {
        return readProfile(contents);
    }

private:
    void write(const BundleOnDisk&) override {}
    void remove(const BundleOnDisk&) override {}
    std::string start(const std::string& application) override { return application + " " + std::to_string(++starts_); }
    void end(const std::string& application) override { machine_->clientLeft(applications_.at(application).client); }
    void submit(const std::string& application, const std::string& token, const Ask& ask) override {
        const Application& asking = applications_.at(application);
        mustBeDone(machine_->submit({asking.client, token, asking.bundle.path, ask.kind, ask.identifier}));
    }
    void reply(const std::string& application, const std::string& token, bool replace) override {
        mustBeDone(machine_->answerReplacement(applications_.at(application).client, token, replace));
    }
    void act(const Saying& saying) override {
        const Outcome outcome = understood(saying, WrittenOn::scenario)(*machine_);
        if (const auto* const refusal = std::get_if<Refusal>(&outcome)) throw NotDone{refusal->message};
    }
    void rest() override {
        while (takeOutbox() || machine_->step()) {
        }
    }

    /// Returns whether something had happened.
    bool takeOutbox() {
        const Outbox outbox = machine_->takeOutbox();
        if (outbox.crashed) {
            machine_ = std::make_unique<Machine>(State{machine_->state()}, *this);
        } else {
            for (const Answer& answer : outbox.answers)
                take(answer);
        }
        return !outbox.events.empty();
    }
    void take(const Answer& answer) {
        for (const auto& [name, application] : applications_)
            if (application.client == answer.client) tell(name, answer.token, textOf(answer.body));
    }

    std::unique_ptr<Machine> machine_ = std::make_unique<Machine>(State{}, *this);
    int starts_ = 0;
};

} // namespace

std::unique_ptr<Mac> newCoreMac() {
    return std::make_unique<CoreMac>();
}

} // namespace simulator::player
