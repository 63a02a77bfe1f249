#include "tests/contract/MachineStage.h"

#include "simulator/core/Verbs.h"

#include <utility>
#include <variant>

namespace contract {

namespace {

constexpr auto client = "the application";

void must(const simulator::Verdict& verdict) {
    if (verdict) ADD_FAILURE() << "the machine refuses: " << verdict->message;
}

/// Passes the machine's answers to the stand-in.
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

void MachineStage::act(const std::vector<std::string>& words) {
    const auto outcome = simulator::understood({simulator::plainWords(words), {}})(machine_);
    if (const auto* const refusal = std::get_if<simulator::Refusal>(&outcome)) must(*refusal);
}

void MachineStage::settle() {
    while (takeSubmission() || machine_.step() || sayAnswers() || standIn_->runMainQueue() || takeReplacementAnswer()) {
    }
}

bool MachineStage::takeSubmission() {
    const auto submissions = standIn_->submissions();
    if (submissionsTaken_ == submissions.size()) return false;
    const auto& submission = submissions[submissionsTaken_];
    must(machine_.submit({client, std::to_string(submissionsTaken_), simulator::sampleApplication, submission.kind,
                          submission.identifier}));
    ++submissionsTaken_;
    return true;
}

bool MachineStage::sayAnswers() {
    const auto outbox = machine_.takeOutbox();
    for (const auto& seal : outbox.seals)
        machine_.sealChecked(seal.request, true);
    for (const auto& answer : outbox.answers)
        std::visit(Prompt{*standIn_, std::stoul(answer.token), asked_}, answer.body);
    return !outbox.answers.empty() || !outbox.seals.empty();
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
