#pragma once

#include "simulator/disk/PropertyList.h"

#include <map>
#include <optional>
#include <string>

namespace simulator {

/// What stands in for a code signature: whose bundle it is, what it may do, and what its files were when it was
/// sealed. It lies in the bundle, in a file that no real system reads.
struct Seal {
    std::string team;
    PropertyList::Dictionary entitlements;
    /// The SHA-256 of each file, by its path in the bundle; of a link that of its target, after the word "link".
    std::map<std::string, std::string> files;
};

/// Nothing if the bundle has none that can be read.
std::optional<Seal> readSeal(const std::string& bundle);
/// Answers with what went wrong; empty if it is written. It appears whole or not at all.
std::string writeSeal(const std::string& bundle, const Seal& seal);
/// Of every file in the bundle but its own seal; a link is never the same as a file, whatever that holds. Nothing if
/// one cannot be read, as a pipe cannot.
std::optional<std::map<std::string, std::string>> digestsOf(const std::string& bundle);

} // namespace simulator
