#pragma once

#include "simulator/core/Disk.h"

#include <map>
#include <utility>

namespace simulator {

/// A disk that holds what a test puts there.
class FakeDisk final : public Disk {
public:
    std::optional<BundleOnDisk> read(const std::string& bundle) const override;
    std::vector<std::string> bundlesIn(const std::string& folder) const override;
    /// One of those that were brought, by its source.
    std::variant<Profile, Refusal> profileIn(const std::string& contents) const override;

    void put(BundleOnDisk bundle) { bundles_[bundle.path] = std::move(bundle); }
    void remove(const std::string& path) { bundles_.erase(path); }
    /// The bundle at a path, to be changed in place; it must be there.
    BundleOnDisk& at(const std::string& path) { return bundles_.at(path); }
    /// From here on its source is a profile's contents.
    void bring(const Profile& profile) { profiles_[profile.source] = profile; }

private:
    std::map<std::string, BundleOnDisk> bundles_;
    std::map<std::string, Profile> profiles_{{"", Profile{}}};
};

inline constexpr auto sampleTeam = "KELVRA0001";
inline constexpr auto sampleApplication = "/Applications/Driver Manager.app";
inline constexpr auto camera = "com.kelvra.ip-camera.cmio";
inline constexpr auto driver = "com.kelvra.driverkit.usb-to-poe";

/// A sound application with a camera extension and a driver, in that order, both 2.1/2105.
BundleOnDisk sampleBundle();
/// Another application of the same maker, at /Applications/Other.app, that carries the same extensions.
BundleOnDisk otherBundle();
/// Gives every extension of a bundle that version.
void setVersion(BundleOnDisk& bundle, const std::string& shortVersion, const std::string& version);

} // namespace simulator
