#pragma once

#include "simulator/core/Machine.h"
#include "tests/contract/ContractTest.h"
#include "tests/simulator/sample/FakeDisk.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace contract {

/// A played service that a script can be followed with.
class ScriptedStandIn : public PlayedService {
public:
    struct Submission {
        simulator::RequestKind kind;
        std::string identifier;
    };

    /// Every submission so far.
    virtual std::vector<Submission> submissions() const = 0;

    // Each of these is delivered in a later runMainQueue().
    virtual void needsApproval(std::size_t submission) = 0;
    virtual void askReplacement(std::size_t submission, const simulator::CopyRecord& existing,
                                const simulator::CopyRecord& replacement) = 0;
    virtual void fail(std::size_t submission, const platform::Error& error) = 0;
    virtual void foundProperties(std::size_t submission, const std::vector<simulator::CopyRecord>& copies) = 0;

    /// What was answered to each question so far, in the order of the questions.
    virtual std::vector<platform::OSSystemExtensionReplacementAction> replacementAnswers() const = 0;

    /// Runs the work that waits in the main queue; false if there was none.
    virtual bool runMainQueue() = 0;

    void findNothing(const std::size_t submission) override { foundProperties(submission, {}); }
    void deliver(const std::function<bool()>& holds) override {
        while (runMainQueue()) {
        }
        EXPECT_TRUE(holds());
    }
};

/// The stage of a scripted stand-in. What it is to say is decided by the machine of the simulator, here in the process,
/// so that the script is the same one that the simulator itself follows.
class MachineStage final : public Stage {
public:
    explicit MachineStage(std::unique_ptr<ScriptedStandIn> standIn);

    platform::OSSystemExtensionManager& manager() override { return standIn_->manager(); }
    /// The words of one line of a script, such as "allow" and an identifier.
    void act(const std::vector<std::string>& words) override;
    /// Returns when neither the machine nor the main queue has anything left to do.
    void settle() override;

private:
    bool takeSubmission();
    bool sayAnswers();
    bool takeReplacementAnswer();

    std::unique_ptr<ScriptedStandIn> standIn_;
    simulator::FakeDisk disk_;
    simulator::Machine machine_;
    std::size_t submissionsTaken_ = 0;
    std::size_t replacementAnswersTaken_ = 0;
    /// The submissions whose questions were not answered yet.
    std::deque<std::size_t> asked_;
};

} // namespace contract
