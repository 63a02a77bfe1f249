#pragma once

#include "simulator/player/Mac.h"

#include <memory>

namespace simulator::player {

/// A Mac in this process: the machine with its own clock, a disk in memory, and applications that only ask. A service
/// that crashes is back at once, with the stored state and without the requests.
class CoreMac final : public Mac, private Disk {
public:
    CoreMac();

    WordList copies(const std::string& identifier) override;
    WordList requests() override;

private:
    // The disk: the bundles of the applications.
    std::optional<BundleOnDisk> read(const std::string& path) const override;
    std::vector<std::string> bundlesIn(const std::string& folder) const override;
    std::variant<Profile, Refusal> profileIn(const std::string& contents) const override;

    void write(const BundleOnDisk&) override {}
    void remove(const BundleOnDisk&) override {}
    std::string start(const std::string& application) override;
    void end(const std::string& application) override;
    void submit(const std::string& application, const std::string& token, const Ask& ask) override;
    void reply(const std::string& application, const std::string& token, bool replace) override;
    void act(const Saying& saying) override;
    void rest() override;

    /// Returns whether something had happened.
    bool takeOutbox();
    void take(const Answer& answer);

    std::unique_ptr<Machine> machine_;
    int starts_ = 0;
};

} // namespace simulator::player
