#pragma once

#include "simulator/core/Machine.h"
#include "tests/simulator/sample/FakeDisk.h"

#include <memory>

namespace simulator {

/// A machine with the sample application, driven by hand. What applications hear is kept as lines such as
/// "a: needs approval", where "a" is the request's token; of a failure the line has the code alone.
class SampleMac {
public:
    SampleMac();

    FakeDisk& disk() { return disk_; }
    Machine& machine() { return *machine_; }
    BundleOnDisk& application() { return disk_.at(sampleApplication); }

    /// The sample application submits a request, of which the machine takes no step yet.
    void submit(const std::string& token, RequestKind kind, const std::string& identifier = camera);
    /// The same for any program.
    void submit(const Submission& submission);
    // The same, and the machine comes to rest.
    void activate(const std::string& token, const std::string& identifier = camera);
    void deactivate(const std::string& token, const std::string& identifier = camera);
    void properties(const std::string& token, const std::string& identifier = camera);
    void answer(const std::string& token, bool replace);
    /// Does what must succeed, and lets the machine come to rest.
    void mustDo(const Verdict& verdict);
    void rest();
    void steps(int count);
    void set(const std::string& name, const std::string& value) {
        machine().setSwitch(switchNamed(name).value(), value);
    }
    void install(const std::string& build, const std::string& condition, const std::string& identifier = camera);
    /// Brings a management profile; the machine takes no step yet.
    void bring(Profile profile);
    /// One that allows nothing and leaves nothing to the user.
    void forbid();
    /// The service dies and comes back with what was kept.
    void comeBack();

    /// What was heard since it was last asked.
    std::vector<std::string> heard();
    /// The copies of an extension, oldest first, as "2105 activated enabled".
    std::vector<std::string> copies(const std::string& identifier = camera) const;
    /// All that was said since this was last asked; what was heard is part of it.
    Outbox takeOutbox();

private:
    void take();

    FakeDisk disk_;
    std::unique_ptr<Machine> machine_;
    Outbox outbox_;
    std::vector<std::string> heard_;
};

} // namespace simulator
