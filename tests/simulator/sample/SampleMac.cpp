#include "tests/simulator/sample/SampleMac.h"

#include <gtest/gtest.h>

#include <utility>

namespace simulator {

namespace {

std::string lineOf(const Answer& answer) {
    const std::string text = textOf(answer.body);
    const bool isFailure = std::holds_alternative<Failure>(answer.body);
    return answer.token + ": " + (isFailure ? text.substr(0, text.find(" \"")) : text);
}

} // namespace

SampleMac::SampleMac() {
    disk_.put(sampleBundle());
    machine_ = std::make_unique<Machine>(State{}, disk_);
}

void SampleMac::submit(const std::string& token, RequestKind kind, const std::string& identifier) {
    submit({"client", token, sampleApplication, kind, identifier});
}

void SampleMac::submit(const Submission& submission) {
    const Verdict verdict = machine().submit(submission);
    EXPECT_FALSE(verdict) << verdict->message;
}

void SampleMac::activate(const std::string& token, const std::string& identifier) {
    submit(token, RequestKind::activation, identifier);
    rest();
}

void SampleMac::deactivate(const std::string& token, const std::string& identifier) {
    submit(token, RequestKind::deactivation, identifier);
    rest();
}

void SampleMac::properties(const std::string& token, const std::string& identifier) {
    submit(token, RequestKind::properties, identifier);
    rest();
}

void SampleMac::answer(const std::string& token, bool replace) {
    mustDo(machine().answerReplacement("client", token, replace));
}

void SampleMac::mustDo(const Verdict& verdict) {
    if (verdict) ADD_FAILURE() << verdict->message;
    rest();
}

void SampleMac::rest() {
    take();
    while (machine().step())
        take();
}

void SampleMac::steps(int count) {
    for (int step = 0; step < count; ++step)
        machine().step();
}

void SampleMac::install(const std::string& build, const std::string& condition, const std::string& identifier) {
    mustDo(machine().install(identifier, {"0.0", build}, condition));
}

void SampleMac::bring(Profile profile) {
    profile.source = "a profile";
    disk_.bring(profile);
    const Verdict verdict = machine().setProfile(profile.source);
    EXPECT_FALSE(verdict) << verdict->message;
}

void SampleMac::forbid() {
    Profile profile;
    profile.allowsUserOverrides = false;
    bring(profile);
}

void SampleMac::comeBack() {
    machine_ = std::make_unique<Machine>(State{machine().state()}, disk_);
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

Outbox SampleMac::takeOutbox() {
    take();
    return std::exchange(outbox_, {});
}

void SampleMac::take() {
    const Outbox news = machine().takeOutbox();
    outbox_.restarting = outbox_.restarting || news.restarting;
    outbox_.crashed = outbox_.crashed || news.crashed;
    outbox_.copies.insert(news.copies.begin(), news.copies.end());
    outbox_.events.insert(outbox_.events.end(), news.events.begin(), news.events.end());
    outbox_.seals.insert(outbox_.seals.end(), news.seals.begin(), news.seals.end());
    outbox_.answers.insert(outbox_.answers.end(), news.answers.begin(), news.answers.end());
    for (const Answer& answer : news.answers)
        heard_.push_back(lineOf(answer));
}

} // namespace simulator
