#pragma once

#include "simulator/scenario/Mac.h"
#include "simulator/scenario/Scenario.h"

#include <cstddef>
#include <optional>
#include <string>

namespace simulator::scenario {

/// The first line that did not go as the scenario says.
struct Mismatch {
    std::size_t line = 0;
    /// What was there instead.
    std::string text;
};

/// Plays a scenario on a Mac that is as new. Nothing: it went as it says. An answer that no line expects is a mismatch
/// too, at the last line.
std::optional<Mismatch> play(const Scenario& scenario, Mac& mac);

} // namespace simulator::scenario
