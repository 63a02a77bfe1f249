#pragma once

#include "simulator/core/Disk.h"
#include "simulator/core/State.h"

#include <optional>
#include <string>
#include <vector>

namespace simulator {

/// The extensions that the machine knows: those that have or had a copy, and those of the bundles that asked or lie in
/// an Applications folder. Reads what it was given, which outlives it.
class Catalog {
public:
    Catalog(const State& state, const Disk& disk);

    /// In alphabetical order.
    std::vector<std::string> identifiers() const;
    std::optional<Extension> find(const std::string& identifier) const;

private:
    std::vector<BundleOnDisk> bundles() const;

    const State& state_;
    const Disk& disk_;
};

} // namespace simulator
