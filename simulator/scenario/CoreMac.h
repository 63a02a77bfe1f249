#pragma once

#include "simulator/core/Machine.h"
#include "simulator/scenario/Mac.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <variant>

namespace simulator::scenario {

/// Reads a management profile, or says why it is none.
using ProfileReader = std::function<std::variant<Profile, Refusal>(const std::string& contents)>;

/// A Mac in this process: the state machine with its own clock, a disk in memory, and applications that only ask. A
/// service that dies comes back at once with the state that was kept, and without the requests.
class CoreMac final : public Mac {
public:
    explicit CoreMac(ProfileReader readProfile);

    void put(const std::string& application, const BundleOnDisk& bundle) override;
    void ask(const Ask& ask) override;
    void answer(const AnswerQuestion& answer) override;
    void quit(const std::string& application) override;
    void perform(const Deed& deed) override;
    std::optional<Heard> hear(const std::string& application) override;
    std::vector<CopyThere> copies(const std::string& identifier) override;
    std::vector<RequestThere> requests() override;

private:
    /// Bundles in memory, by the name that the scenario gives the application.
    class Bundles final : public Disk {
    public:
        std::optional<BundleOnDisk> read(const std::string& path) const override;
        std::vector<std::string> bundlesIn(const std::string& folder) const override;

        std::map<std::string, BundleOnDisk> byName;
    };

    struct Running {
        /// How the machine calls it; another each time that it is started.
        std::string client;
        /// What it asked, by token.
        std::map<std::string, Ask> asked;
    };

    Running& running(const std::string& application);
    void mustDo(const Verdict& verdict);
    void rest();
    /// Says whether something had happened.
    bool takeOutbox();
    void take(const Outbox& outbox);
    void take(const Answer& answer);
    void reply(const std::string& client, const std::string& token, const Ask& ask);

    ProfileReader readProfile_;
    Bundles disk_;
    std::unique_ptr<Machine> machine_;
    std::map<std::string, Running> running_;
    std::map<std::string, std::deque<Heard>> heard_;
    std::int64_t lastNumber_ = 0;
};

} // namespace simulator::scenario
