#include "tests/simulator/sample/SampleMac.h"

#include <gtest/gtest.h>

#include <utility>

namespace simulator {

namespace {

std::string flagsOf(const CopyRecord& record) {
    if (record.isEnabled) return "enabled";
    if (record.isAwaitingUserApproval) return "awaiting";
    return record.isUninstalling ? "uninstalling" : "neither";
}

std::string textOf(const FoundProperties& found) {
    std::string text = "found";
    for (const CopyRecord& record : found.copies)
        text += " " + record.version + " " + flagsOf(record);
    return text;
}

std::string lineOf(const Answer& answer) {
    if (const auto* found = std::get_if<FoundProperties>(&answer.body)) return answer.token + ": " + textOf(*found);
    if (const auto* asked = std::get_if<ReplacementAsked>(&answer.body)) {
        return answer.token + ": replace " + asked->existing.version + " by " + asked->replacement.version + "?";
    }
    return answer.token + ": " + textOf(answer.body);
}

} // namespace

SampleMac::SampleMac() {
    disk_.put(sampleBundle());
    machine_ = std::make_unique<Machine>(State{}, disk_);
}

void SampleMac::ask(const std::string& token, RequestKind kind, const std::string& identifier) {
    mustDo(machine().submit({"client", token, sampleApplication, kind, identifier}));
}

void SampleMac::activate(const std::string& token, const std::string& identifier) {
    ask(token, RequestKind::activation, identifier);
}

void SampleMac::deactivate(const std::string& token, const std::string& identifier) {
    ask(token, RequestKind::deactivation, identifier);
}

void SampleMac::properties(const std::string& token, const std::string& identifier) {
    ask(token, RequestKind::properties, identifier);
}

void SampleMac::answer(const std::string& token, bool replace) {
    mustDo(machine().answerReplacement("client", token, replace));
}

void SampleMac::mustDo(const Verdict& verdict) {
    if (verdict) ADD_FAILURE() << verdict->message;
    rest();
}

void SampleMac::rest() {
    take(machine().takeOutbox());
    while (machine().step())
        take(machine().takeOutbox());
}

void SampleMac::install(const std::string& build, const std::string& condition, const std::string& identifier) {
    mustDo(machine().install(identifier, {"0.0", build}, condition));
}

void SampleMac::comeBack() {
    State kept = machine().state();
    machine_ = std::make_unique<Machine>(std::move(kept), disk_);
    rest();
}

std::vector<std::string> SampleMac::heard() {
    return std::exchange(heard_, {});
}

std::vector<std::string> SampleMac::copies(const std::string& identifier) const {
    std::vector<std::string> lines;
    for (const auto& [number, copy] : machine_->state().copies) {
        if (copy.extension.identifier != identifier) continue;
        lines.push_back(copy.version.version + " " + std::string{describe(copy.state).text});
    }
    return lines;
}

void SampleMac::take(const Outbox& outbox) {
    restarted_ = restarted_ || outbox.restarting;
    crashed_ = crashed_ || outbox.crashed;
    for (const Answer& answer : outbox.answers) {
        answers_.push_back(answer);
        heard_.push_back(lineOf(answer));
    }
}

} // namespace simulator
