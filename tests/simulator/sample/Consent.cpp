#include "tests/simulator/sample/Consent.h"

#include <gtest/gtest.h>

#include <utility>

namespace simulator {

void Consent::given(const std::string& identifier) {
    approved_.insert(identifier);
    justApproved_ = identifier;
}

void Consent::look(const Machine& machine) {
    std::map<std::int64_t, CopyState> now;
    std::set<std::string> lasting;
    for (const auto& [number, copy] : machine.state().copies) {
        const std::string& identifier = copy.extension.identifier;
        now.emplace(number, copy.state);
        if (isActivated(copy.state) && approved_.count(identifier) != 0) lasting.insert(identifier);
        if (copy.state == CopyState::enabled) lookAt(copy, machine.state().settings);
    }
    before_ = std::move(now);
    approved_ = std::move(lasting);
    justApproved_.clear();
}

/// What was enabled before runs on, whatever is allowed by now.
void Consent::lookAt(const Copy& copy, const Settings& settings) const {
    const auto before = before_.find(copy.number);
    if (before != before_.end() && before->second == CopyState::enabled) return;
    const Extension& extension = copy.extension;
    EXPECT_FALSE(settings.profile.forbids(extension.team, extension.identifier))
        << extension.identifier << " is enabled, and the profile forbids it";
    const bool isSwitchedOn = before != before_.end() && before->second == CopyState::disabled;
    EXPECT_TRUE(isSwitchedOn || covers(copy, settings)) << extension.identifier << " is enabled, and nobody allowed it";
}

bool Consent::covers(const Copy& copy, const Settings& settings) const {
    const Extension& extension = copy.extension;
    if (settings.profile.allows(extension.team, extension.identifier)) return true;
    const bool asksAgain = settings.valueOf(Switch::upgrade) == "asked";
    return asksAgain ? justApproved_ == extension.identifier : approved_.count(extension.identifier) != 0;
}

} // namespace simulator
