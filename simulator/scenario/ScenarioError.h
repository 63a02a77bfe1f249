#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace simulator::scenario {

/// A scenario that cannot be understood. what() is "NAME:LINE: what is wrong, and what would be right".
class ScenarioError : public std::runtime_error {
public:
    ScenarioError(const std::string& name, std::size_t line, const std::string& text)
        : std::runtime_error{name + ":" + std::to_string(line) + ": " + text} {}
    /// About the whole of it.
    ScenarioError(const std::string& name, const std::string& text) : std::runtime_error{name + ": " + text} {}
};

} // namespace simulator::scenario
