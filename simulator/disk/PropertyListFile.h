#pragma once

#include "simulator/disk/PropertyList.h"

#include <optional>
#include <string>

namespace simulator {

/// The property list in a file; nothing if there is none, or more than a megabyte of it.
std::optional<PropertyList> readPropertyList(const std::string& path);

} // namespace simulator
