#pragma once

#include "simulator/core/Machine.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace simulator {

/// Keeps a record of its own of what the user has approved, and finds fault with each copy that becomes enabled without
/// the user or a management profile, or against a profile.
class Consent {
public:
    /// The user has just approved the extension, or a copy was put there as if he had.
    void given(const std::string& identifier);
    /// Fails the test if something is out of place. To be called after each thing that happens to the machine.
    void look(const Machine& machine);

private:
    void lookAt(const Copy& copy, const Settings& settings) const;
    bool covers(const Copy& copy, const Settings& settings) const;

    /// An approval lasts as long as there is an activated copy: a removal withdraws it.
    std::set<std::string> approved_;
    std::string justApproved_;
    /// The states of the copies when they were last looked at.
    std::map<std::int64_t, CopyState> before_;
};

} // namespace simulator
