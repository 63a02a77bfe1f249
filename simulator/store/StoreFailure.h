#pragma once

#include <stdexcept>
#include <string>

namespace simulator {

/// The store cannot be used. what() is one line that names the file and the reason.
class StoreFailure : public std::runtime_error {
public:
    StoreFailure(const std::string& file, const std::string& reason) : std::runtime_error{file + ": " + reason} {}
};

} // namespace simulator
