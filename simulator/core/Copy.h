#pragma once

#include "simulator/core/Category.h"
#include "simulator/core/CopyState.h"

#include <cstdint>
#include <string>

namespace simulator {

struct Version {
    std::string shortVersion;
    std::string version;

    friend bool operator==(const Version&, const Version&) = default;
};

/// What all copies of an extension have in common.
struct Extension {
    std::string team;
    std::string identifier;
    std::string name;
    Category category = Category::driver;
    /// The bundle identifier of the application that it belongs to.
    std::string owner;

    friend bool operator==(const Extension&, const Extension&) = default;
};

/// One copy of an extension on the simulated machine.
struct Copy {
    /// The younger, the higher; never used twice.
    std::int64_t number = 0;
    Extension extension;
    Version version;
    /// The bundle that brought it; empty if it was put there by hand.
    std::string application;
    CopyState state = CopyState::validating;
    /// It has outlived a restart that should have removed it.
    bool lingered = false;

    friend bool operator==(const Copy&, const Copy&) = default;
};

} // namespace simulator
