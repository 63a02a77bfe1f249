#pragma once

#include "simulator/core/Machine.h"
#include "tests/simulator/sample/FakeDisk.h"

#include <memory>

namespace simulator {

/// A machine with the sample application, driven by hand. What the application hears is kept as lines such as
/// "a: needs approval", where "a" is the request's token.
class SampleMac {
public:
    SampleMac();

    FakeDisk& disk() { return disk_; }
    Machine& machine() { return *machine_; }
    BundleOnDisk& application() { return disk_.at(sampleApplication); }

    /// Submits a request of the sample application and lets the machine come to rest.
    void ask(const std::string& token, RequestKind kind, const std::string& identifier);
    void activate(const std::string& token, const std::string& identifier = camera);
    void deactivate(const std::string& token, const std::string& identifier = camera);
    void properties(const std::string& token, const std::string& identifier = camera);
    void answer(const std::string& token, bool replace);
    /// Does what must succeed, and lets the machine come to rest.
    void mustDo(const Verdict& verdict);
    void rest();
    void set(const std::string& name, const std::string& value) { mustDo(machine().setSwitch(name, value)); }
    void install(const std::string& build, const std::string& condition, const std::string& identifier = camera);
    /// The service dies and comes back with what was kept.
    void comeBack();

    /// What the application heard since it was last asked.
    std::vector<std::string> heard();
    /// The copies of an extension, oldest first, as "2105 activated enabled".
    std::vector<std::string> copies(const std::string& identifier = camera) const;
    const std::vector<Answer>& answers() const { return answers_; }
    bool restarted() const { return restarted_; }
    bool crashed() const { return crashed_; }

private:
    void take(const Outbox& outbox);

    FakeDisk disk_;
    std::unique_ptr<Machine> machine_;
    std::vector<Answer> answers_;
    std::vector<std::string> heard_;
    bool restarted_ = false;
    bool crashed_ = false;
};

} // namespace simulator
