#pragma once

#include "simulator/core/Copy.h"
#include "simulator/core/Request.h"
#include "simulator/core/Settings.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace simulator {

/// Everything about the simulated machine that outlives the service.
struct State {
    /// By number, which is by age.
    std::map<std::int64_t, Copy> copies;
    /// Team and identifier of each extension that the user has approved.
    std::set<std::pair<std::string, std::string>> approvals;
    /// By number, in the order in which they were ordered.
    std::map<std::int64_t, Fault> faults;
    /// What is known of every extension that ever had a copy, by identifier.
    std::map<std::string, Extension> seen;
    /// Every bundle that an application has asked from.
    std::set<std::string> applications;
    Settings settings;
    /// The simulated clock, in milliseconds.
    std::int64_t clock = 0;
    /// The last number given to a copy, a request or a fault.
    std::int64_t lastNumber = 0;

    friend bool operator==(const State&, const State&) = default;
};

} // namespace simulator
