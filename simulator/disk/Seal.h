#pragma once

#include "simulator/disk/PropertyList.h"

#include <map>
#include <optional>
#include <string>

namespace simulator {

/// The SHA-256 of each file in a bundle, by its path in the bundle; for a link, "link" and that of its target's path.
using Digests = std::map<std::string, std::string>;

/// Stands in for a code signature: the team, the entitlements, and the files of a bundle when it was sealed. It is a
/// file in the bundle that no real system reads.
struct Seal {
    std::string team;
    /// A dictionary.
    PropertyList entitlements;
    Digests files;
};

/// The folder that contains the Info.plist and the seal of a bundle: Contents, or the bundle itself if it is flat.
std::string contentsOf(const std::string& bundle);

/// Nothing if the bundle has no readable seal.
std::optional<Seal> readSeal(const std::string& bundle);
/// Returns what went wrong, or nothing. The file appears whole or not at all.
std::string writeSeal(const std::string& bundle, const Seal& seal);

/// Of every file in the bundle except its own seal. Nothing if one cannot be read, for example a pipe. May be called on
/// any thread.
std::optional<Digests> digestsOf(const std::string& bundle);

} // namespace simulator
