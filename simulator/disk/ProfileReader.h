#pragma once

#include "simulator/core/Profile.h"

#include <optional>
#include <string>

namespace simulator {

/// The profile in a property list: either the keys themselves, or a configuration profile whose payloads hold them.
/// Empty bytes are an empty profile; nothing for what is no property list or says nothing about extensions.
std::optional<Profile> readProfile(const std::string& bytes);

} // namespace simulator
