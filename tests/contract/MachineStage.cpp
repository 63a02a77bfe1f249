#include "tests/contract/MachineStage.h"

#include <utility>
#include <variant>

namespace contract {

namespace {

constexpr auto client = "the application";

simulator::RequestKind kindOf(const Kind kind) {
    switch (kind) {
    case Kind::activation:
        return simulator::RequestKind::activation;
    case Kind::deactivation:
        return simulator::RequestKind::deactivation;
    case Kind::properties:
        break;
    }
    return simulator::RequestKind::properties;
}

void must(const simulator::Verdict& verdict) {
    if (verdict) ADD_FAILURE() << "the machine refuses: " << verdict->message;
}

/// Tells the stand-in what to say.
struct Prompt {
    ScriptedStandIn& standIn;
    std::size_t submission;
    std::deque<std::size_t>& asked;

    void operator()(std::monostate) const {}
    void operator()(const simulator::ReplacementAsked& question) const {
        asked.push_back(submission);
        standIn.askReplacement(submission, question.existing, question.replacement);
    }
    void operator()(const simulator::NeedsApproval&) const { standIn.needsApproval(submission); }
    void operator()(const simulator::Finished& finished) const { standIn.finish(submission, finished.result); }
    void operator()(const simulator::Failure& failure) const {
        standIn.fail(submission, {failure.domain, failure.code, failure.description});
    }
    void operator()(const simulator::FoundProperties& found) const {
        standIn.foundProperties(submission, found.copies);
    }
};

} // namespace

MachineStage::MachineStage(std::unique_ptr<ScriptedStandIn> standIn)
    : standIn_{std::move(standIn)}, machine_{simulator::State{}, disk_} {
    disk_.put(simulator::sampleBundle());
}

void MachineStage::install(const std::string& identifier, const std::string& shortVersion, const std::string& version,
                           const std::string& condition) {
    must(machine_.install(identifier, {shortVersion, version}, condition));
}

void MachineStage::keepDriversRunning() {
    must(machine_.setSwitch("driver", "in-use"));
}

void MachineStage::failNext(const Kind kind, const platform::Error& error) {
    simulator::Fault fault;
    fault.kind = simulator::Fault::Kind::error;
    fault.request = kindOf(kind);
    fault.failure = {error.domain, error.code, error.localizedDescription};
    must(machine_.orderFault(fault));
}

void MachineStage::allow(const std::string& identifier) {
    must(machine_.allow(identifier));
}

void MachineStage::deny(const std::string& identifier) {
    must(machine_.deny(identifier));
}

void MachineStage::authorize(const std::string& identifier) {
    must(machine_.authorize(identifier));
}

void MachineStage::refuse(const std::string& identifier) {
    must(machine_.refuse(identifier));
}

void MachineStage::settle() {
    while (takeSubmission() || machine_.step() || sayAnswers() || standIn_->runMainQueue() || takeReplacementAnswer()) {
    }
}

bool MachineStage::takeSubmission() {
    const auto submissions = standIn_->submissions();
    if (submissionsTaken_ == submissions.size()) return false;
    const auto& submission = submissions[submissionsTaken_];
    must(machine_.submit({client, std::to_string(submissionsTaken_), simulator::sampleApplication,
                          kindOf(submission.kind), submission.identifier}));
    ++submissionsTaken_;
    return true;
}

bool MachineStage::sayAnswers() {
    const auto answers = machine_.takeOutbox().answers;
    for (const auto& answer : answers)
        std::visit(Prompt{*standIn_, std::stoul(answer.token), asked_}, answer.body);
    return !answers.empty();
}

bool MachineStage::takeReplacementAnswer() {
    const auto answers = standIn_->replacementAnswers();
    if (replacementAnswersTaken_ == answers.size()) return false;
    const auto answer = answers[replacementAnswersTaken_++];
    if (asked_.empty()) {
        ADD_FAILURE() << "a question was answered that was not asked";
        return true;
    }
    must(machine_.answerReplacement(client, std::to_string(asked_.front()),
                                    answer == platform::OSSystemExtensionReplacementAction::replace));
    asked_.pop_front();
    return true;
}

} // namespace contract
