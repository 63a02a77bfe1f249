#pragma once

#include "simulator/core/Fault.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace simulator::scenario {

/// How an order of a fault calls the requests that it is for.
struct RequestWord {
    const char* word;
    std::optional<RequestKind> kind;
};

inline constexpr std::array requestWords{
    RequestWord{"activate", RequestKind::activation},
    RequestWord{"deactivate", RequestKind::deactivation},
    RequestWord{"properties", RequestKind::properties},
    RequestWord{"any", std::nullopt},
};

/// Those of the words for requests that such a fault can befall.
std::vector<std::string> requestWordsFor(Fault::Kind kind);

} // namespace simulator::scenario
