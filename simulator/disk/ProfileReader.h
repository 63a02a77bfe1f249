#pragma once

#include "simulator/core/Refusal.h"
#include "simulator/core/State.h"

#include <string>
#include <variant>

namespace simulator {

/// The profile in a property list: either the keys themselves, or a configuration profile whose payloads hold them,
/// beside others that are about something else. Empty bytes are an empty profile. Refused is what is no property list,
/// what holds no policy for extensions, and a key whose value is of the wrong type, which could say anything.
std::variant<Profile, Refusal> readProfile(const std::string& bytes);

} // namespace simulator
