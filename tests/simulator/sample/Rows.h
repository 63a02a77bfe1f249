#pragma once

#include "simulator/core/CopyTransition.h"
#include "simulator/core/RequestTransition.h"

#include <string>

namespace simulator {

/// "staging, approved -> activated enabled"
std::string textOf(const CopyTransition& row);
/// "replacement, cancel -> ended: failed 11"
std::string textOf(const RequestTransition& row);

} // namespace simulator
