#pragma once

#include "simulator/core/Disk.h"

namespace simulator {

/// The application bundle in which a file lies, the innermost one, without links; empty if it lies in none.
std::string bundleOfFile(const std::string& file);
/// The path without links; as it was given if there is nothing there.
std::string canonicalPath(const std::string& path);

/// Whether each file of an extension is as it was when it was sealed, and none was added. Reads them all.
bool isAsSealed(const std::string& extension);

/// The profile in a property list: either the keys themselves, or a configuration profile whose payloads hold them,
/// beside others that are about something else. Empty bytes are an empty profile. Refused is what is no property list,
/// what holds no policy for extensions, and a key whose value is of the wrong type, which could say anything.
std::variant<Profile, Refusal> readProfile(const std::string& bytes);

/// The bundles of this machine's file system.
class RealDisk final : public Disk {
public:
    std::optional<BundleOnDisk> read(const std::string& bundle) const override;
    std::vector<std::string> bundlesIn(const std::string& folder) const override;
    std::string canonical(const std::string& path) const override { return canonicalPath(path); }
    std::variant<Profile, Refusal> profileIn(const std::string& contents) const override {
        return readProfile(contents);
    }
};

} // namespace simulator
