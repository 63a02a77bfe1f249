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

/// A stand-in that answers what it is told. Submissions are numbered from 0.
class ScriptedStandIn {
public:
    virtual ~ScriptedStandIn() = default;

    struct Submission {
        simulator::RequestKind kind;
        std::string identifier;
    };

    /// The manager that takes the submissions.
    virtual platform::OSSystemExtensionManager& manager() = 0;

    /// Every submission so far.
    virtual std::vector<Submission> submissions() const = 0;

    // Delivered by the next runMainQueue().
    virtual void needsApproval(std::size_t submission) = 0;
    virtual void askReplacement(std::size_t submission, const simulator::CopyRecord& existing,
                                const simulator::CopyRecord& replacement) = 0;
    virtual void finish(std::size_t submission, std::int64_t result) = 0;
    virtual void fail(std::size_t submission, const platform::Error& error) = 0;
    virtual void foundProperties(std::size_t submission, const std::vector<simulator::CopyRecord>& copies) = 0;

    /// The answers to the questions so far, in order.
    virtual std::vector<platform::OSSystemExtensionReplacementAction> replacementAnswers() const = 0;

    /// Runs the queued work of the main queue; false if there was none.
    virtual bool runMainQueue() = 0;
};

/// The stage of a scripted stand-in. The simulator's machine, in this process, decides what it answers, so the
/// stand-in behaves as the simulator does.
class MachineStage final : public Stage {
public:
    explicit MachineStage(std::unique_ptr<ScriptedStandIn> standIn);

    platform::OSSystemExtensionManager& manager() override { return standIn_->manager(); }
    /// Runs one line of a script, such as "allow" and an identifier.
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
    /// The submissions with an open question.
    std::deque<std::size_t> asked_;
};

} // namespace contract
