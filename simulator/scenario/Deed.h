#pragma once

#include "simulator/core/Copy.h"
#include "simulator/core/Fault.h"

#include <cstdint>
#include <string>
#include <variant>

namespace simulator::scenario {

/// What the person in front of the Mac does about one extension.
struct ByPerson {
    enum class What { allow, deny, authorize, refuse, disable, enable };

    What what = What::allow;
    std::string identifier;
};

struct Restart {};

struct Reset {};

struct Install {
    std::string identifier;
    Version version;
    std::string condition;
};

struct Uninstall {
    std::string team;
    std::string identifier;
};

struct SetDeveloperMode {
    bool on = false;
};

struct SetProfile {
    /// The property list; empty takes the profile away.
    std::string contents;
};

struct Advance {
    std::int64_t milliseconds = 0;
};

struct SetSwitch {
    std::string name;
    std::string value;
};

struct OrderFault {
    Fault fault;
};

/// What the person does, and what befalls the machine.
using Deed = std::variant<ByPerson, Restart, Reset, Install, Uninstall, SetDeveloperMode, SetProfile, Advance,
                          SetSwitch, OrderFault>;

} // namespace simulator::scenario
