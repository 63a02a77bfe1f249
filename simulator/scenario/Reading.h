#pragma once

#include "simulator/scenario/Line.h"
#include "simulator/scenario/Step.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace simulator::scenario {

/// A line that is being read, and what the lines before it have told.
struct Reading {
    Line& line;
    std::set<std::string>& applications;
    /// From where the scenario names other files.
    const std::string& folder;
};

/// What a line may begin with.
struct Verb {
    std::string_view name;
    std::string_view arguments;
    Action (*read)(Reading& reading);
};

const std::vector<Verb>& verbsOfTheDisk();
const std::vector<Verb>& verbsOfApplications();
const std::vector<Verb>& verbsOfTheMac();

/// Reads what follows the word "expect".
Expectation readExpectation(Reading& reading);
/// What a line that begins with it may look like.
std::vector<std::string> usagesOfExpect();

/// Takes the name of an application that is there.
std::string takeApplication(Reading& reading);
/// Takes "WORD APPLICATION" if it is there; it is the sample application if not.
std::string takeApplicationAfter(std::string_view word, Reading& reading);

} // namespace simulator::scenario
