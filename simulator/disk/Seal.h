#pragma once

#include "simulator/disk/PropertyList.h"

#include <map>
#include <optional>
#include <string>

namespace simulator {

/// The SHA-256 of each file in a bundle, by its path in it; of a link that of its target, after the word "link".
using Digests = std::map<std::string, std::string>;

/// What stands in for a code signature: whose bundle it is, what it may do, and what its files were when it was
/// sealed. It lies in the bundle, in a file that no real system reads.
struct Seal {
    std::string team;
    /// A dictionary.
    PropertyList entitlements;
    Digests files;
};

/// The folder of a bundle in which its Info.plist and its seal lie: Contents, or the bundle itself where it has none,
/// as a driver has none.
std::string contentsOf(const std::string& bundle);

/// Nothing if the bundle has none that can be read.
std::optional<Seal> readSeal(const std::string& bundle);
/// Answers with what went wrong; empty if it is written. It appears whole or not at all.
std::string writeSeal(const std::string& bundle, const Seal& seal);

/// Of every file in the bundle but its own seal; a link is never the same as a file. Nothing if one cannot be read, as
/// a pipe cannot. Reads them all, however large they are; may be called on any thread.
std::optional<Digests> digestsOf(const std::string& bundle);

} // namespace simulator
