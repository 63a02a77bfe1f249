#pragma once

#include "simulator/scenario/Step.h"

#include <string>
#include <string_view>
#include <vector>

namespace simulator::scenario {

/// A script for a simulated Mac: what is on its disk, what applications ask, what the person does, and what is to be
/// seen then; one step a line.
struct Scenario {
    /// How complaints call it.
    std::string name;
    std::vector<Step> steps;
};

/// Reads a scenario. name: how complaints call it. folder: from where it names other files, which are read here; what
/// it says of them depends on no other folder. Throws ScenarioError.
Scenario readScenario(std::string_view text, const std::string& name, const std::string& folder);

/// The same for a file, which is called by its path. Throws ScenarioError, also where the file cannot be read.
Scenario readScenarioFile(const std::string& path);

/// Every verb with its arguments, a line each.
std::string grammar();

} // namespace simulator::scenario
