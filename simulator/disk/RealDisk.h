#pragma once

#include "simulator/core/Disk.h"

namespace simulator {

/// The bundles of this machine's file system.
class RealDisk final : public Disk {
public:
    std::optional<BundleOnDisk> read(const std::string& bundle) const override;
    std::vector<std::string> bundlesIn(const std::string& folder) const override;
};

/// The application bundle in which a file lies, the innermost one, without links; empty if it lies in none.
std::string bundleOfFile(const std::string& file);
/// The path without links; as it was given if there is nothing there.
std::string canonicalPath(const std::string& path);

} // namespace simulator
